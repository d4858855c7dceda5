// One run of a helper, started as the dock starts it.

import { spawn } from "node:child_process";

const newline = 0x0a;

/** Cuts what comes in into lines, as the dock does: what follows the last newline is never read. */
class Lines {
  complete = [];
  rest = Buffer.alloc(0);

  append(bytes, atMs) {
    this.rest = Buffer.concat([this.rest, bytes]);
    for (let end = this.rest.indexOf(newline); end >= 0; end = this.rest.indexOf(newline)) {
      this.complete.push({ bytes: this.rest.subarray(0, end), atMs });
      this.rest = this.rest.subarray(end + 1);
    }
  }
}

/**
 * Runs `program` to its end, or kills it after `limitMs`. `onOutput`, when given, is called with the lines so far
 * whenever there is more output.
 *
 * Answers `lines` (bytes of each without its newline, and when it came), `rest` (bytes after the last newline),
 * `exitCode` or `signal`, `timedOut`, `durationMs`, `errorOutput` (text); or only `startError` when it could not be
 * started.
 */
export function runHelper(program, args, { limitMs, folder, onOutput }) {
  return new Promise((resolve) => {
    const started = performance.now();
    const lines = new Lines();
    let errorOutput = "";
    let timedOut = false;

    let child;
    try {
      // Standard input is an open pipe that nothing is written to.
      child = spawn(program, args, { cwd: folder, stdio: "pipe", windowsHide: true });
    } catch (startError) {
      // Some reasons are thrown, others come as the event below.
      resolve({ startError });
      return;
    }
    const limit = setTimeout(() => {
      timedOut = true;
      child.kill("SIGKILL");
    }, limitMs);

    function finish(ending) {
      clearTimeout(limit);
      child.stdin.destroy();
      // Programs that the helper leaves behind may hold the pipes open.
      child.stdout.destroy();
      child.stderr.destroy();
      const durationMs = performance.now() - started;
      resolve({ lines: lines.complete, rest: lines.rest, timedOut, durationMs, errorOutput, ...ending });
    }

    child.stdin.on("error", () => {});
    child.stdout.on("data", (bytes) => {
      lines.append(bytes, performance.now() - started);
      onOutput?.(lines.complete);
    });
    child.stderr.on("data", (bytes) => {
      errorOutput = (errorOutput + bytes).slice(-2000);
    });
    child.on("error", (startError) => finish({ startError }));
    child.on("exit", (exitCode, signal) => {
      const end = () => finish({ exitCode, signal });
      // The last output may still be in the pipe.
      const patience = setTimeout(end, 1000);
      child.on("close", () => {
        clearTimeout(patience);
        end();
      });
    });
  });
}
