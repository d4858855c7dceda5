// Reads the events from a run's output, and what is wrong with them.

import { error, warning } from "./findings.mjs";
import { allKinds, complaintsAbout, kindsOf } from "./schema.mjs";

const utf8 = new TextDecoder("utf-8", { fatal: true });

function shown(text) {
  return text.length > 70 ? `${text.slice(0, 70)}…` : text;
}

function isObject(value) {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

/** Returns `event` for an object, nothing for an empty line, otherwise a `finding`. */
function readLine(bytes) {
  let text;
  try {
    text = utf8.decode(bytes).trim();
  } catch {
    return { finding: error("a line is not UTF-8, so the dock drops it") };
  }
  if (text === "") {
    return {};
  }
  let value;
  try {
    value = JSON.parse(text);
  } catch (failure) {
    // Without a brace it is a stray print, not a broken event.
    return text.startsWith("{")
      ? { finding: error(`a line is not JSON, so the dock drops it: ${shown(text)} (${failure.message})`) }
      : { finding: warning(`a line is not JSON; the dock drops it, log to a file instead: ${shown(text)}`) };
  }
  if (!isObject(value)) {
    return { finding: error(`a line is JSON but no object, so the dock drops it: ${shown(text)}`) };
  }
  return { event: value };
}

function complaintsAboutKind(command, { event: kind }) {
  if (typeof kind !== "string") {
    return [error(`an object has no text "event" that names its kind, so the dock ignores it`)];
  }
  if (!allKinds.includes(kind)) {
    return [warning(`"${kind}" is no event of the protocol; the dock ignores it`)];
  }
  if (!kindsOf(command).includes(kind)) {
    const read = kindsOf(command)
      .map((each) => `"${each}"`)
      .join(", ");
    return [error(`"${kind}" is not read after ${command}, so the user sees nothing of it (read: ${read})`)];
  }
  return [];
}

/**
 * Reads the output of a run of `command`. Returns `events`, those that the dock handles, each with `atMs`; `spoke`,
 * whether there was any object; and `findings`.
 */
export function readOutput(command, { lines, rest }) {
  const events = [];
  const findings = [];
  let spoke = false;
  for (const { bytes, atMs } of lines) {
    const { event, finding } = readLine(bytes);
    if (finding) {
      findings.push(finding);
    }
    if (!event) {
      continue;
    }
    spoke = true;
    const aboutKind = complaintsAboutKind(command, event);
    if (aboutKind.length > 0) {
      findings.push(...aboutKind);
    } else {
      findings.push(...complaintsAbout(event));
      events.push({ ...event, atMs });
    }
  }
  const unread = rest.toString().trim();
  if (unread !== "") {
    findings.push(error(`the last line has no newline at its end, so the dock never reads it: ${shown(unread)}`));
  }
  return { events, spoke, findings };
}
