// Runs a command in rounds and collects everything that is wrong, causes first.

import { brokenPromises } from "./answers.mjs";
import { commands, futureCommand } from "./commands.mjs";
import {
  complaintsAboutEnd,
  complaintsAboutErrorOutput,
  complaintsAboutFlood,
  complaintsAboutFlushing,
} from "./endings.mjs";
import { error, isError, leftOut, warning } from "./findings.mjs";
import { readOutput } from "./output.mjs";
import { refusedStart } from "./program.mjs";
import { watchFile } from "./replay.mjs";
import { runHelper } from "./run.mjs";

/** Whether this event is an end that the user is waiting for. An offer is no answer to a download. */
function settles(command, { event, update }) {
  const isOffer = event === "update" && update === true;
  return commands[command].answers.includes(event) && !(command === "--download-update" && isOffer);
}

function isSilent({ exitCode, lines, rest }) {
  return exitCode === 0 && lines.length === 0 && rest.length === 0;
}

/** A link may wait for its user for as long as it likes. */
function isUnconfirmed(command, { timedOut }, events) {
  const isSettled = events.some((event) => settles(command, event));
  return command === "--link" && timedOut && !isSettled && events.some(({ event }) => event === "code");
}

/** `findings`, with what the user gets when they mean that no answer came. */
function withConsequence(command, run, events, findings, session) {
  const { answers, without, optional, advice } = commands[command];
  if (advice) {
    return findings.map((each) =>
      isError(each) ? { ...each, effect: undefined, text: `${each.text} (${advice})` } : each,
    );
  }
  if (events.some((event) => settles(command, event))) {
    return findings;
  }
  if (isUnconfirmed(command, run, events)) {
    return findings;
  }
  if (findings.length === 0 && isSilent(run) && optional(session)) {
    return [leftOut(`no event came: ${without}`)];
  }
  const missing = `no ${answers.map((each) => `"${each}"`).join(" or ")} event came: ${without}`;
  const cause = findings.find(isError) ?? findings[0];
  if (!cause) {
    return [error(missing)];
  }
  const effect = [cause.effect, `So ${missing}.`].filter(Boolean).join(" ");
  return [{ ...cause, severity: "error", effect }, ...findings.filter((each) => each !== cause)];
}

function complaintsAboutSeveralAnswers(command, events) {
  const kinds = events.filter((event) => settles(command, event)).map(({ event }) => `"${event}"`);
  return kinds.length > 1
    ? [warning(`it answers ${kinds.length} times (${kinds.join(", ")}); the dock shows the last`)]
    : [];
}

/** What the user reads of a failure, which no check can judge. */
function toldFailures(command, events, { offersUpdate }) {
  const isExpected = command === "--download-update" && !offersUpdate;
  return events
    .filter(
      ({ event, error: text }) =>
        event === "error" && text && typeof text === "string" && !isExpected && command !== futureCommand,
    )
    .map((event) => warning(`it ends in an "error" event; the user reads: ${event.error}`));
}

/** Runs the helper once; returns `findings` and `events`. */
export async function checkRun(session, command, args) {
  const run = await runHelper(session.program, args, {
    ...session,
    limit_ms: session.limit_ms ?? commands[command].limit_ms,
  });
  if (run.startError) {
    return { findings: [refusedStart(run.startError)], events: [] };
  }
  session.onRun(args, run);
  const output = readOutput(command, run);
  const promises = [];
  for (const event of output.events) {
    promises.push(...(await brokenPromises(event, session)));
  }
  // An exit code only matters because nothing could be read.
  const unreadable = output.spoke ? [] : output.findings.filter(isError);
  const findings = [
    ...complaintsAboutFlood(run),
    ...complaintsAboutErrorOutput(run, output),
    ...unreadable,
    ...(isUnconfirmed(command, run, output.events)
      ? [warning("the link was not confirmed in the browser in time, so its end was not seen")]
      : run.flooded
        ? []
        : complaintsAboutEnd(run, output)),
    ...output.findings.filter((each) => !unreadable.includes(each)),
    ...promises,
    ...toldFailures(command, output.events, session),
    ...complaintsAboutSeveralAnswers(command, output.events),
    ...complaintsAboutFlushing(run, output),
  ];
  return { findings: withConsequence(command, run, output.events, findings, session), events: output.events };
}

function shortsOf(events) {
  return events.flatMap(({ formatted }) => (Array.isArray(formatted) ? formatted : []));
}

/** `runs` are the events of each run. */
function complaintsAboutSharedShorts(runs) {
  const all = runs.flatMap((events) => [...new Set(shortsOf(events))]);
  const twice = all.find((file, index) => all.indexOf(file) !== index);
  return twice ? [error(`two clips ended in the same file: ${twice}`)] : [];
}

function complaintsAboutRepeatedTriggers(polls) {
  const [first, second] = polls.map((poll) => JSON.stringify(poll.flatMap(({ triggers }) => triggers ?? [])));
  return first !== "[]" && first === second
    ? [error("two polls reported the same uses: the dock makes a clip each time; report each use once")]
    : [];
}

/** Runs the argument lists of a round at the same time; returns what came of each. */
async function runRound(session, command, round) {
  let results = [];
  const runAll = async () => {
    results = await Promise.all(round.map((args) => checkRun(session, command, args)));
  };
  if (command !== "--process") {
    await runAll();
    return { results, findings: [] };
  }
  return { findings: await watchFile(session.replay, runAll), results };
}

/** Runs all rounds of `command`; returns `findings` and the `events` of all runs. */
export async function checkRounds(session, command) {
  const findings = [];
  const told = [];
  for (const round of commands[command].rounds(session)) {
    const { results, findings: common } = await runRound(session, command, round);
    const alone = round.length === 1;
    findings.push(...common);
    for (const { findings: found } of results) {
      findings.push(...(alone ? found : found.map((each) => ({ ...each, atOnce: true }))));
    }
    told.push(...results.map(({ events }) => events));
    // More runs would fail the same way or hang again.
    if (findings.some(isError)) {
      break;
    }
  }
  findings.push(...complaintsAboutSharedShorts(told));
  if (command === "--poll-triggers" && told.length > 1) {
    findings.push(...complaintsAboutRepeatedTriggers(told));
  }
  return { findings, events: told.flat() };
}
