// Runs a helper as the dock does.

import { spawn } from "node:child_process";

const newline = 0x0a;
const keptErrorOutput = 65_536;
const timeToEnd_ms = 1000;
// More than any answer needs; without a limit, an endless output would fill the memory.
const maxOutput_bytes = 16 * 1024 * 1024;
const maxLines = 100_000;

/** Splits input into lines as the dock does: bytes after the last newline are ignored. */
class Lines {
  complete = [];
  rest = Buffer.alloc(0);

  append(bytes, at_ms) {
    this.rest = Buffer.concat([this.rest, bytes]);
    for (let end = this.rest.indexOf(newline); end >= 0; end = this.rest.indexOf(newline)) {
      this.complete.push({ bytes: this.rest.subarray(0, end), at_ms });
      this.rest = this.rest.subarray(end + 1);
    }
  }
}

/** Ends a run that took too long; notes in `outcome` whether it had only been waiting for input. */
function endOverdue(child, outcome) {
  outcome.timedOut = true;
  child.once("exit", () => {
    outcome.waitedForInput = !child.killed;
  });
  child.stdin.end();
  return setTimeout(() => child.kill("SIGKILL"), timeToEnd_ms);
}

function start(program, args, workingFolder) {
  try {
    // As in the dock, standard input is a pipe that stays open and empty.
    return { child: spawn(program, args, { cwd: workingFolder, stdio: "pipe", windowsHide: true }) };
  } catch (startError) {
    // Some start errors are thrown, others arrive as an event.
    return { startError };
  }
}

/** Reads what the child writes into `outcome`, and calls `onOutput` with the lines so far. */
function collectOutput(child, outcome, lines, { started, onOutput }) {
  let output_bytes = 0;
  child.stdin.on("error", () => {});
  child.stdout.on("data", (bytes) => {
    output_bytes += bytes.length;
    if (outcome.flooded) {
      return;
    }
    lines.append(bytes, performance.now() - started);
    if (output_bytes > maxOutput_bytes || lines.complete.length > maxLines) {
      outcome.flooded = true;
      child.kill("SIGKILL");
    }
    onOutput?.(lines.complete);
  });
  child.stderr.on("data", (bytes) => {
    outcome.errorOutput = (outcome.errorOutput + bytes).slice(-keptErrorOutput);
  });
}

/** Calls `finish` once the child has ended and its output has been read. */
function whenEnded(child, finish) {
  child.on("error", (startError) => finish({ startError }));
  child.on("exit", (exitCode, signal) => {
    const end = () => finish({ exitCode, signal });
    // Output may still be in the pipe; but orphaned children of the helper may hold it open.
    const patience = setTimeout(end, timeToEnd_ms);
    child.on("close", () => {
      clearTimeout(patience);
      end();
    });
  });
}

/**
 * Runs `program` to its end, or ends it after `limit_ms`. `onOutput`, when given, is called with the lines so far
 * whenever there is more output.
 *
 * Returns `lines` (bytes of each without its newline, and when it came), `rest` (bytes after the last newline),
 * `exitCode` or `signal`, `timedOut`, `flooded` (it wrote too much and was ended), `waitedForInput` (it ended once its
 * input did), `duration_ms`, `errorOutput` (the last 64 KiB of text); or only `startError` when it could not be started.
 */
export function runHelper(program, args, { limit_ms, workingFolder, onOutput }) {
  const { child, startError } = start(program, args, workingFolder);
  if (startError) {
    return Promise.resolve({ startError });
  }
  return new Promise((resolve) => {
    const started = performance.now();
    const lines = new Lines();
    const outcome = { errorOutput: "", timedOut: false, flooded: false, waitedForInput: false };
    let limit = setTimeout(() => {
      limit = endOverdue(child, outcome);
    }, limit_ms);
    collectOutput(child, outcome, lines, { started, onOutput });
    whenEnded(child, (ending) => {
      clearTimeout(limit);
      [child.stdin, child.stdout, child.stderr].forEach((pipe) => pipe.destroy());
      const duration_ms = performance.now() - started;
      resolve({ ...outcome, lines: lines.complete, rest: lines.rest, duration_ms, ...ending });
    });
  });
}
