// Runs a command in rounds and collects everything that is wrong.

import { brokenPromises } from "./answers.mjs";
import { commands } from "./commands.mjs";
import { error, warning } from "./findings.mjs";
import { readOutput } from "./output.mjs";
import { watchFile } from "./replay.mjs";
import { runHelper } from "./run.mjs";

const longEnoughToNotice_ms = 1000;
const atTheSameTime_ms = 100;

function lastLine(text) {
  return text.trim().split("\n").at(-1);
}

function seconds(ms) {
  return `${(ms / 1000).toFixed(1)} s`;
}

function complaintsAboutEnd(run, { spoke }) {
  const { exitCode, signal } = run;
  if (run.timedOut) {
    return [error(`it did not end within ${seconds(run.durationMs)} and was killed; the dock would wait for ever`)];
  }
  const how = signal ? `crashed (${signal})` : `ended with exit code ${exitCode}`;
  if (!spoke && (signal || exitCode !== 0)) {
    const said = lastLine(run.errorOutput);
    return [
      error(
        `it ${how} without an event: the user reads "The Kestrune helper stopped unexpectedly"` +
          (said ? `; its error output ends: ${said}` : ""),
      ),
    ];
  }
  return signal ? [warning(`it ${how} after its answer; the dock does not mind`)] : [];
}

/** Several events that all came at the end of a long run were probably not flushed. */
function complaintsAboutFlushing({ durationMs }, events) {
  const [first, last] = [events.at(0), events.at(-1)];
  const together = events.length > 1 && last.atMs - first.atMs < atTheSameTime_ms;
  if (together && durationMs > longEnoughToNotice_ms && durationMs - first.atMs < atTheSameTime_ms) {
    return [
      warning(
        `all ${events.length} events came at once, at the end of a run of ${seconds(durationMs)}: ` +
          "flush standard output after each",
      ),
    ];
  }
  return [];
}

function complaintsAboutAnswer(command, run, events) {
  const { answers, without } = commands[command];
  // Progress and codes may precede it; an offer does not answer a download.
  const isOffer = ({ event, update }) => event === "update" && update === true;
  const settles = (each) => answers.includes(each.event) && !(command === "--download-update" && isOffer(each));
  if (events.some(settles)) {
    return [];
  }
  if (run.timedOut && command === "--link" && events.some(({ event }) => event === "code")) {
    return [warning("the link was not confirmed in the browser in time, so its end was not seen")];
  }
  const wanted = answers.map((each) => `"${each}"`).join(" or ");
  return [error(`no ${wanted} event came: ${without}`)];
}

/** Runs the helper once; returns `findings` and `events`. */
export async function checkRun(session, command, args) {
  const run = await runHelper(session.program, args, session);
  if (run.startError) {
    const text = `it cannot be started (${run.startError.code}): the user reads "Couldn't start the Kestrune helper"`;
    return { findings: [error(text)], events: [] };
  }
  const output = readOutput(command, run);
  const findings = [
    ...output.findings,
    ...complaintsAboutAnswer(command, run, output.events),
    ...complaintsAboutEnd(run, output),
    ...complaintsAboutFlushing(run, output.events),
  ];
  for (const event of output.events) {
    findings.push(...(await brokenPromises(event)));
  }
  return { findings, events: output.events };
}

function shortsOf({ events }) {
  return events.flatMap(({ formatted }) => (Array.isArray(formatted) ? formatted : []));
}

function complaintsAboutSharedShorts(results) {
  const all = results.flatMap((result) => [...new Set(shortsOf(result))]);
  const twice = all.find((file, index) => all.indexOf(file) !== index);
  return twice ? [error(`two clips made at the same time ended in the same file: ${twice}`)] : [];
}

/** Runs all rounds of `command`; returns `findings` and all `events`. */
export async function checkRounds(session, command) {
  const findings = [];
  const events = [];
  for (const round of commands[command].rounds(session)) {
    let results = [];
    const runAll = async () => {
      results = await Promise.all(round.map((args) => checkRun(session, command, args)));
    };
    if (command === "--process") {
      findings.push(...(await watchFile(session.replay, runAll)), ...complaintsAboutSharedShorts(results));
    } else {
      await runAll();
    }
    const alone = round.length === 1;
    for (const { findings: found } of results) {
      findings.push(...(alone ? found : found.map((each) => ({ ...each, atOnce: true }))));
    }
    events.push(...results.flatMap((result) => result.events));
    // More runs would fail the same way or hang again.
    if (findings.some(({ severity }) => severity === "error")) {
      break;
    }
  }
  return { findings, events };
}
