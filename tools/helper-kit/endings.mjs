// How a run ended, and what is wrong with that.

import { error, quoted, warning } from "./findings.mjs";

function seconds(ms) {
  return `${(ms / 1000).toFixed(1)} s`;
}

/** The most telling line: the last that names an error, otherwise the last. */
function tellingLine(text) {
  const lines = text.split("\n").map((line) => line.trim());
  const errors = lines.filter((line) => /error\b|exception|panic|not found|denied|no such/i.test(line));
  return errors.at(-1) ?? lines.findLast((line) => line !== "");
}

/** What a run without events printed about its failure, as the end of a sentence. */
function lastWords({ lines, rest, errorOutput }) {
  const output = [...lines.map(({ bytes }) => bytes), rest].map((bytes) => bytes.toString()).join("\n");
  const [inError, inOutput] = [errorOutput, output].map(tellingLine);
  if (inError) {
    return `; its error output says: ${quoted(inError)}`;
  }
  return inOutput ? `; its output says: ${quoted(inOutput)}` : "";
}

/** Finds events in the error output of a run without events on its standard output. */
export function complaintsAboutErrorOutput({ errorOutput }, { spoke }) {
  const event = errorOutput.split("\n").find((line) => /\{\s*["']event["']\s*:/.test(line));
  return !spoke && event
    ? [error(`an event was written to standard error, which nobody reads: ${quoted(event.trim())}`)]
    : [];
}

/** A run that was stopped because of what it wrote. */
export function complaintsAboutFlood({ flooded }) {
  return flooded ? [error("it wrote too much and was killed: more than 16 MiB, or more than 100,000 lines")] : [];
}

function complaintAboutHang({ waitedForInput, duration_ms }, { spoke }) {
  const told = spoke ? "after its answer" : "and reported nothing";
  return waitedForInput
    ? error("it waits for standard input to end; the dock never writes to it, leaves it open and waits for ever")
    : error(`it did not end within ${seconds(duration_ms)} ${told}, and was killed; the dock waits for ever`);
}

/** What is wrong with the end of a run. */
export function complaintsAboutEnd(run, output) {
  const { exitCode, signal } = run;
  if (run.timedOut) {
    return [complaintAboutHang(run, output)];
  }
  const how = signal ? `crashed (${signal})` : `ended with exit code ${exitCode}`;
  if (!output.spoke && (signal || exitCode !== 0)) {
    return [
      error(
        `it ${how} without an event${lastWords(run)}`,
        `The user reads "The Kestrune helper stopped unexpectedly${signal ? "" : ` (code ${exitCode})`} …".`,
      ),
    ];
  }
  if (signal) {
    return [warning(`it ${how} after its answer; the dock ignores that`)];
  }
  const toldError = output.events.some(({ event }) => event === "error");
  return exitCode !== 0 && output.events.length > 0 && !toldError
    ? [warning(`it ${how} after its answer; the dock ignores that`)]
    : [];
}

const longEnoughToNotice_ms = 1000;
const atTheSameTime_ms = 100;
const atTheEnd = 0.8;

/** Several events that all came at the end of a long run were probably not flushed. */
export function complaintsAboutFlushing({ duration_ms }, { events }) {
  const [first, last] = [events.at(0), events.at(-1)];
  const together = events.length > 1 && last.at_ms - first.at_ms < atTheSameTime_ms;
  if (together && duration_ms > longEnoughToNotice_ms && first.at_ms > atTheEnd * duration_ms) {
    return [
      warning(
        `all ${events.length} events came at once, at the end of a run of ${seconds(duration_ms)}: ` +
          "flush standard output after each",
      ),
    ];
  }
  return [];
}
