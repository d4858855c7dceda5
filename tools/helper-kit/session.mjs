// Checks a helper: which commands run, in which order, and what is reported.

import { existsSync } from "node:fs";
import { mkdir, mkdtemp, readdir, rm } from "node:fs/promises";
import os from "node:os";
import path from "node:path";
import { checkChatSet } from "./chat-settings.mjs";
import { checkRounds, checkRun } from "./checks.mjs";
import { offeredChoices } from "./choices.mjs";
import { commands } from "./commands.mjs";
import { error, warning } from "./findings.mjs";
import { complaintsAboutProgram } from "./program.mjs";
import { NoReplay, prepareReplay } from "./replay.mjs";

/** Why `command` is skipped; undefined if it runs. */
function reasonToSkip(command, { all, only, linked }) {
  const changes =
    command === "--process" && linked ? "an account is linked, the Short may be uploaded" : commands[command].changes;
  return changes && !all && only.length === 0 ? `${changes}; only with --all or --only ${command.slice(2)}` : undefined;
}

/** Asks the user to confirm the link, whose address the dock would open itself. */
function announceCode(report) {
  let announced = false;
  return (lines) => {
    for (const { bytes } of announced ? [] : lines) {
      const [, url] = /"url"\s*:\s*"(\w{2,}:[^"]+)"/.exec(bytes.toString()) ?? [];
      if (url) {
        announced = true;
        report.ask(`confirm in a browser: ${url}`);
      }
    }
  };
}

/** The dock believes only the status, so a reported link must show there. */
async function checkLink(session) {
  const { findings, events } = await checkRounds({ ...session, onOutput: announceCode(session.report) }, "--link");
  if (!events.some(({ event }) => event === "linked")) {
    return { findings, events };
  }
  const status = await checkRun(session, "--status", ["--status"]);
  const isLinked = status.events.findLast(({ event }) => event === "status")?.linked === true;
  return isLinked
    ? { findings, events: [...events, ...status.events] }
    : { findings: [...findings, error(`it reported "linked", but --status then reports no linked account`)], events };
}

async function checkCommand(session, command) {
  switch (command) {
    case "--chat-set":
      return { findings: await checkChatSet(session), events: [] };
    case "--link":
      return checkLink(session);
    case "--process":
      return checkRounds({ ...session, replay: await prepareReplay(session.folder, session.replay) }, command);
    default:
      return checkRounds(session, command);
  }
}

/** Empties the working folder of the runs; what was in it is a list with one finding or none. */
async function complaintsAboutWorkingFolder({ workingFolder }) {
  const names = await readdir(workingFolder).catch(() => undefined);
  await rm(workingFolder, { recursive: true, force: true });
  await mkdir(workingFolder);
  if (!names) {
    return [error("it removed its working folder, which is OBS's own")];
  }
  return names.length > 0
    ? [warning(`it wrote into its working folder, which is OBS's own and may be read-only: ${names.join(", ")}`)]
    : [];
}

/** What later checks need to know of these answers. */
function learn(session, events) {
  const status = events.findLast(({ event }) => event === "status");
  if (status) {
    session.linked = status.linked === true;
    session.choices = offeredChoices(status);
  }
  session.offersUpdate ||= events.some(({ event, update }) => event === "update" && update === true);
  events
    .flatMap(({ formatted }) => (Array.isArray(formatted) ? formatted : []))
    .forEach((file) => {
      session.shorts.add(file);
    });
}

/** Checks one command; returns whether that was possible. */
async function checkAndTell(session, command) {
  const { report } = session;
  try {
    const { findings, events } = await checkCommand(session, command);
    learn(session, events);
    // Without its working folder, no later run could start.
    report.tellFindings(command, [...(await complaintsAboutWorkingFolder(session)), ...findings]);
    return true;
  } catch (failure) {
    if (!(failure instanceof NoReplay)) {
      throw failure;
    }
    report.tellSkipped(command, failure.message);
    return false;
  }
}

/** Returns the exit code. */
async function checkAll(session) {
  const { report } = session;
  let complete = true;
  const asked = Object.keys(commands).filter((command) => session.only.length === 0 || session.only.includes(command));
  for (const command of asked) {
    const reason = reasonToSkip(command, session);
    if (reason === undefined) {
      complete = (await checkAndTell(session, command)) && complete;
    } else {
      report.tellSkipped(command, reason);
    }
  }
  report.tellEnd([...session.shorts].filter((file) => existsSync(file)));
  return report.errors > 0 ? 1 : complete ? 0 : 2;
}

/** Checks the helper that the options name; writes to `report`. Returns the exit code. */
export async function checkHelper(options, report) {
  const slips = complaintsAboutProgram(options.program);
  if (slips.length > 0) {
    report.tellFindings(options.program, slips);
    Object.keys(commands).forEach((command) => report.tellSkipped(command));
    report.tellEnd([]);
    return 1;
  }
  const folder = await mkdtemp(path.join(os.tmpdir(), "check-helper-"));
  const workingFolder = path.join(folder, "working-folder");
  await mkdir(workingFolder);
  const onRun = options.verbose ? (args, run) => report.tellRun(args, run) : () => {};
  const known = { linked: false, offersUpdate: false, choices: offeredChoices(undefined), shorts: new Set() };
  try {
    return await checkAll({ ...options, ...known, report, folder, workingFolder, onRun });
  } finally {
    await rm(folder, { recursive: true, force: true });
  }
}
