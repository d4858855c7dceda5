// Checks a helper: which commands run, in which order, and what is reported.

import { mkdtemp, rm } from "node:fs/promises";
import os from "node:os";
import path from "node:path";
import { checkChatSet } from "./chat-settings.mjs";
import { checkRounds } from "./checks.mjs";
import { commands, offeredChoices } from "./commands.mjs";
import { prepareReplay } from "./replay.mjs";

/** Why `command` is skipped; undefined if it runs. */
function reasonToSkip(command, { all, only, linked }) {
  if (only.length > 0) {
    return only.includes(command) ? undefined : "not asked for";
  }
  const changes =
    command === "--process" && linked ? "an account is linked, the Short may be uploaded" : commands[command].changes;
  return changes && !all ? `${changes}: only with --all or --only ${command.slice(2)}` : undefined;
}

/** Asks the user to confirm the link, whose address the dock would open itself. */
function announceCode(say) {
  let announced = false;
  return (lines) => {
    for (const { bytes } of announced ? [] : lines) {
      const [, url] = /"url"\s*:\s*"([^"]+)"/.exec(bytes.toString()) ?? [];
      if (url) {
        announced = true;
        say(`            confirm in a browser: ${url}`);
      }
    }
  };
}

/** Merges equal findings of several runs, and notes which occur only in overlapping runs. */
function summedUp(findings) {
  const alone = new Set(findings.filter(({ atOnce }) => !atOnce).map(({ text }) => text));
  const unique = new Map(findings.map((finding) => [finding.text, finding]));
  return [...unique.values()].map(({ severity, text }) => ({
    severity,
    text: alone.has(text) ? text : `with two runs at the same time: ${text}`,
  }));
}

async function checkCommand(session, command) {
  switch (command) {
    case "--chat-set":
      return { findings: await checkChatSet(session), events: [] };
    case "--link":
      return checkRounds({ ...session, onOutput: announceCode(session.say) }, command);
    case "--process":
      return checkRounds({ ...session, replay: await prepareReplay(session.folder, session.replay) }, command);
    default:
      return checkRounds(session, command);
  }
}

async function checkAll(session) {
  const { say } = session;
  const tell = ({ severity, text }) => say(`  ${severity.padEnd(8)}  ${text}`);
  const counts = { error: 0, warning: 0 };
  const skipped = [];
  const shorts = new Set();
  for (const command of Object.keys(commands)) {
    const skip = reasonToSkip(command, session);
    if (skip) {
      skipped.push(command);
      if (skip !== "not asked for") {
        say(command);
        tell({ severity: "skipped", text: skip });
      }
      continue;
    }
    say(command);
    const { findings, events } = await checkCommand(session, command);
    const summary = summedUp(findings);
    summary.forEach(({ severity }) => (counts[severity] += 1));
    (summary.length > 0 ? summary : [{ severity: "ok", text: "as the protocol wants it" }]).forEach(tell);

    const status = events.findLast(({ event }) => event === "status");
    if (status) {
      session.linked = status.linked === true;
      session.choices = offeredChoices(status);
    }
    events.flatMap(({ formatted }) => (Array.isArray(formatted) ? formatted : [])).forEach((file) => shorts.add(file));
  }
  shorts.forEach((file) => say(`made, and left there: ${file}`));
  say(`errors: ${counts.error}, warnings: ${counts.warning}, not run: ${skipped.join(" ") || "none"}`);
  return counts.error === 0;
}

/** Checks the helper and passes each line of the report to `say`. True if there are no errors. */
export async function checkHelper(options, say) {
  const folder = await mkdtemp(path.join(os.tmpdir(), "check-helper-"));
  try {
    return await checkAll({ ...options, say, folder, choices: offeredChoices(undefined), linked: false });
  } finally {
    await rm(folder, { recursive: true, force: true });
  }
}
