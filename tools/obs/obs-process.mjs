// One run of OBS: start, log, exit.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { createWriteStream } from "node:fs";
import { run } from "./command.mjs";
import { waitFor } from "./wait.mjs";

// Keep OBS from asking anything at start.
const quietFlags = ["--multi", "--disable-updater", "--disable-missing-files-check", "--disable-shutdown-check"];

export class ObsProcess {
  #child;
  #exited;
  #output = "";
  #logFile;

  /** Starts OBS; keeps its output in memory and in `logFile`. */
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

  get running() {
    return this.#child.exitCode === null && this.#child.signalCode === null;
  }

  get pid() {
    return this.#child.pid;
  }

  /** Resolves to the exit code or the signal's name. */
  get exited() {
    return this.#exited;
  }

  lines() {
    return this.#output.split("\n");
  }

  /** Waits for an output line that matches and returns the match; throws as soon as OBS has exited. */
  async waitForLine(pattern, limit_ms = 30_000) {
    return waitFor(
      `the log line ${pattern}`,
      () => {
        const match = this.lines()
          .map((line) => pattern.exec(line))
          .find(Boolean);
        if (!match && !this.running) {
          throw new Error(`OBS exited before the log line ${pattern}; see ${this.#logFile}`);
        }
        return match;
      },
      { limit_ms, explain: () => `see ${this.#logFile}` },
    );
  }

  /** Command lines of OBS's running children. */
  async childCommands() {
    const processes = (await run("ps", ["-e", "-ww", "-o", "ppid=,args="])).split("\n");
    const parentAndCommand = processes.map((line) => /^\s*(\d+)\s(.*)$/.exec(line)).filter(Boolean);
    const children = parentAndCommand.filter(([, parent]) => Number(parent) === this.#child.pid);
    return children.map(([, , command]) => command);
  }

  /**
   * Ends OBS as a logout does. Returns the exit code (or signal), the number of memory leaks that OBS reports (or
   * undefined) and the duration in milliseconds. After `limit_ms` it kills OBS and throws.
   */
  async stop(limit_ms = 20_000) {
    const begin = performance.now();
    this.#child.kill("SIGINT");
    const timer = setTimeout(() => this.#child.kill("SIGKILL"), limit_ms);
    const exitCode = await this.#exited;
    clearTimeout(timer);
    const milliseconds = Math.round(performance.now() - begin);
    if (milliseconds >= limit_ms) {
      throw new Error(`OBS did not exit within ${limit_ms} ms and was killed; see ${this.#logFile}`);
    }
    const leaks = /Number of memory leaks: (\d+)/.exec(this.#output);
    return { exitCode, memoryLeaks: leaks ? Number(leaks[1]) : undefined, milliseconds };
  }

  /** For cleaning up after a failure. */
  async kill() {
    this.#child.kill("SIGKILL");
    await this.#exited;
  }
}
