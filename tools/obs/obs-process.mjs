// One run of OBS Studio: start, log lines, clean end.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { createWriteStream } from "node:fs";
import { run } from "./command.mjs";
import { waitFor } from "./wait.mjs";

// Every question that OBS would ask a person at start-up is switched off.
const quietFlags = ["--multi", "--disable-updater", "--disable-missing-files-check", "--disable-shutdown-check"];

export class ObsProcess {
  #child;
  #exited;
  #output = "";
  #logFile;

  /** Starts OBS with the given environment and flags; what it prints is kept in memory and in `logFile`. */
  constructor(environment, logFile, flags = []) {
    this.#logFile = logFile;
    const log = createWriteStream(logFile);
    this.#child = spawn("obs", [...quietFlags, ...flags], { env: environment, stdio: ["ignore", "pipe", "pipe"] });
    this.#exited = once(this.#child, "exit").then(([code, signal]) => signal ?? code);
    for (const stream of [this.#child.stdout, this.#child.stderr]) {
      stream.setEncoding("utf8");
      stream.on("data", (text) => {
        this.#output += text;
        log.write(text);
      });
    }
    this.#child.on("close", () => log.end());
  }

  /** True until the process has ended. */
  get running() {
    return this.#child.exitCode === null && this.#child.signalCode === null;
  }

  /** Process id. */
  get pid() {
    return this.#child.pid;
  }

  /** Resolves with the exit code, or the name of the signal that ended the process. */
  get exited() {
    return this.#exited;
  }

  /** Everything printed so far, as lines. */
  lines() {
    return this.#output.split("\n");
  }

  /** Waits until a printed line matches the pattern and returns the match. Throws at once when OBS ends before. */
  async waitForLine(pattern, limitMs = 30_000) {
    return waitFor(
      `the log line ${pattern}`,
      () => {
        const match = this.lines()
          .map((line) => pattern.exec(line))
          .find(Boolean);
        if (!match && !this.running) {
          throw new Error(`OBS ended before the log line ${pattern}; see ${this.#logFile}`);
        }
        return match;
      },
      { limitMs, explain: () => `see ${this.#logFile}` },
    );
  }

  /** Command lines of the programs that OBS has started and that still run. */
  async childCommands() {
    const processes = (await run("ps", ["-e", "-ww", "-o", "ppid=,args="])).split("\n");
    const parentAndCommand = processes.map((line) => /^\s*(\d+)\s(.*)$/.exec(line)).filter(Boolean);
    const children = parentAndCommand.filter(([, parent]) => Number(parent) === this.#child.pid);
    return children.map(([, , command]) => command);
  }

  /**
   * Asks OBS to end as a closing session does and waits for it.
   * Returns the exit code (or signal name), the number of memory leaks that OBS counted (undefined when it did not
   * say) and the milliseconds that it took. A process that outlives `limitMs` is killed, and that is an error.
   */
  async stop(limitMs = 20_000) {
    const begin = performance.now();
    this.#child.kill("SIGINT");
    const timer = setTimeout(() => this.#child.kill("SIGKILL"), limitMs);
    const exitCode = await this.#exited;
    clearTimeout(timer);
    const milliseconds = Math.round(performance.now() - begin);
    if (milliseconds >= limitMs) {
      throw new Error(`OBS did not end within ${limitMs} ms and was killed; see ${this.#logFile}`);
    }
    const leaks = /Number of memory leaks: (\d+)/.exec(this.#output);
    return { exitCode, memoryLeaks: leaks ? Number(leaks[1]) : undefined, milliseconds };
  }

  /** Ends OBS without mercy; for cleaning up after a failure. */
  async kill() {
    this.#child.kill("SIGKILL");
    await this.#exited;
  }
}
