// Runs a helper as the dock does.

import { spawn } from "node:child_process";

const newline = 0x0a;

/** Splits input into lines as the dock does: bytes after the last newline are ignored. */
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
 * Runs `program` to its end, or kills it after `limitMs`. `onOutput`, if given, gets the lines so far at each output.
 *
 * Resolves to `lines` (each with its bytes, without the newline, and its time), `rest` (bytes after the last newline),
 * `exitCode` or `signal`, `timedOut`, `durationMs` and `errorOutput` (text); or, if the program does not start, only to
 * `startError`.
 */
export function runHelper(program, args, { limitMs, folder, onOutput }) {
  return new Promise((resolve) => {
    const started = performance.now();
    const lines = new Lines();
    let errorOutput = "";
    let timedOut = false;

    let child;
    try {
      // As in the dock, standard input is a pipe that stays open and empty.
      child = spawn(program, args, { cwd: folder, stdio: "pipe", windowsHide: true });
    } catch (startError) {
      // Some start errors are thrown, others arrive as the event below.
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
      // Orphaned children of the helper may hold the pipes open.
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
      // Output may still be in the pipe.
      const patience = setTimeout(end, 1000);
      child.on("close", () => {
        clearTimeout(patience);
        end();
      });
    });
  });
}
