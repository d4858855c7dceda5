// Checks --chat-set: changes one number, checks that it was saved, and restores the settings.

import { checkRun } from "./checks.mjs";
import { error, isError, leftOut, warning } from "./findings.mjs";

const maxUses = 100;

/** In the dock's order. */
function settingsOf(chat) {
  return {
    command: chat.command,
    cooldown_s: Number.isInteger(chat.cooldown_s) ? chat.cooldown_s : 30,
    enabled: chat.enabled === true,
    per_stream_cap: Number.isInteger(chat.per_stream_cap) ? chat.per_stream_cap : 10,
  };
}

function differences(wanted, answer) {
  return Object.keys(wanted)
    .filter((key) => wanted[key] !== settingsOf(answer)[key])
    .map((key) => `"${key}" is ${JSON.stringify(answer[key])}, not ${JSON.stringify(wanted[key])}`);
}

/** Returns what --chat-get reports: the settings, `stored`, and the `findings`. */
async function storedChat(session) {
  const { events, findings } = await checkRun(session, "--chat-get", ["--chat-get"]);
  const stored = events.findLast(({ error: failure, command }) => !failure && typeof command === "string");
  return { stored, findings };
}

/** Sends settings; returns what is wrong with the answer and with the --chat-get that follows. */
async function send(session, settings) {
  const { findings, events } = await checkRun(session, "--chat-set", ["--chat-set", JSON.stringify(settings)]);
  const answer = events.at(-1);
  if (!answer) {
    return findings;
  }
  if (answer.error) {
    return [...findings, error(`it refuses settings like its own; the user reads: ${answer.error}`)];
  }
  const wrong = typeof answer.command === "string" ? differences(settings, answer) : [];
  if (wrong.length > 0) {
    return [...findings, error(`its answer differs from what was sent: ${wrong.join(", ")}`)];
  }
  const { stored } = await storedChat(session);
  const lost = stored ? differences(settings, stored) : ["no settings"];
  return lost.length > 0
    ? [...findings, error(`--chat-get then reports something else: ${lost.join(", ")}`)]
    : findings;
}

export async function checkChatSet(session) {
  const { stored: before, findings: without } = await storedChat(session);
  if (!before) {
    return without.every(({ severity }) => severity === "left out") && without.length > 0
      ? [leftOut("--chat-get reports no settings, so there are none to change")]
      : [warning("not run: --chat-get reports no settings to restore")];
  }
  const own = settingsOf(before);
  const cap = own.per_stream_cap;
  const findings = await send(session, { ...own, per_stream_cap: cap < maxUses ? cap + 1 : cap - 1 });
  const restoring = await send(session, own);
  if (restoring.some(isError)) {
    findings.push(error(`the settings could not be restored: ${JSON.stringify(own)}`));
  }
  return findings;
}
