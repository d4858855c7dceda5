// Reads the events from a run's output, and what is wrong with them.

import { error, quoted, warning } from "./findings.mjs";
import { linesOfOneText, slipOf, textBeforeEvent } from "./json-slips.mjs";
import { nearest } from "./near.mjs";
import { allKinds, complaintsAbout, isObject, kindsOf } from "./schema.mjs";

// Qt takes a byte order mark before JSON for what it is, and so does this.
const utf8 = new TextDecoder("utf-8", { fatal: true });
const dropped = "The dock drops such a line.";
const longestLine_bytes = 8 * 1024 * 1024;

function complaintAboutNonJson(text) {
  const before = textBeforeEvent(text);
  if (before !== undefined) {
    return error(`text stands before the event on its line: ${JSON.stringify(before)} in ${quoted(text)}`, dropped);
  }
  // Without a brace it is a stray print, not a broken event.
  return text.startsWith("{")
    ? error(`a line is not JSON: ${slipOf(text)}: ${quoted(text)}`, dropped)
    : warning(`a line is not JSON; the dock drops it, log to a file instead: ${quoted(text)}`);
}

function complaintAboutNonObject(text, value) {
  if (typeof value === "string" && /^\s*\{/.test(value)) {
    return error(`an event was encoded twice: it is a text that holds JSON: ${quoted(text)}`, dropped);
  }
  return Array.isArray(value) && value.some(isObject)
    ? error(`a line is a list; write each event on a line of its own, without brackets: ${quoted(text)}`, dropped)
    : error(`a line is JSON but no object: ${quoted(text)}`, dropped);
}

/** Reads the line `lines[index]`: `event`, `finding`, or neither; `count` is how many lines that took. */
function readLine(lines, index) {
  const text = lines[index];
  if (text === "") {
    return { count: 1 };
  }
  let value;
  try {
    value = JSON.parse(text);
  } catch {
    const count = /^[{[]/.test(text) ? linesOfOneText(lines, index) : undefined;
    return count
      ? { count, finding: error("JSON goes over several lines; write one object per line, without indents", dropped) }
      : { count: 1, finding: complaintAboutNonJson(text) };
  }
  return isObject(value) ? { count: 1, event: value } : { count: 1, finding: complaintAboutNonObject(text, value) };
}

function complaintAboutMissingKind(event) {
  const names = Object.keys(event);
  const wrapper = names.find((name) => isObject(event[name]) && "event" in event[name]);
  if (wrapper) {
    return error(`the event is wrapped in "${wrapper}"; write the inner object alone`);
  }
  const other = names.find((name) => allKinds.includes(event[name])) ?? nearest("event", names);
  return other
    ? error(`an object has no member "event"; did you mean that by "${other}"?`)
    : error(`an object has no member "event": ${quoted(JSON.stringify(event))}`);
}

function complaintsAboutKind(command, event) {
  if (!("event" in event)) {
    return [complaintAboutMissingKind(event)];
  }
  const kind = event.event;
  if (typeof kind !== "string") {
    return [error(`"event" must be a text but is ${quoted(JSON.stringify(kind))}`)];
  }
  const readable = kindsOf(command);
  if (readable.includes(kind)) {
    return [];
  }
  if (allKinds.includes(kind)) {
    const read = readable.map((each) => `"${each}"`).join(", ");
    return [error(`"${kind}" is not read after ${command}, so the user sees nothing of it (read: ${read})`)];
  }
  const meant = nearest(kind, readable) ?? nearest(kind, allKinds);
  return [
    meant
      ? error(`"${kind}" is no event; did you mean "${meant}"?`)
      : warning(`"${kind}" is no event of the protocol; the dock ignores it`),
  ];
}

function complaintsAboutRest(rest) {
  const text = rest.toString().trim();
  if (text === "") {
    return [];
  }
  return [
    text.includes("\r")
      ? error("lines end in a carriage return alone; the dock waits for a newline", "It reads none of them.")
      : error(`the last line has no newline at its end, so the dock never reads it: ${quoted(text)}`),
  ];
}

/** UTF-16 shows as a NUL beside every letter. */
function complaintAboutEncoding(bytes) {
  if (bytes.length > 1 && (bytes[0] === 0 || bytes[1] === 0 || bytes.readUInt16BE() === 0xfffe)) {
    return error("the output is UTF-16; write UTF-8");
  }
  return undefined;
}

function decoded(bytes) {
  try {
    return utf8.decode(bytes).trim();
  } catch {
    return undefined;
  }
}

/**
 * Reads the lines of a run of `command`. Returns `events`, those that the dock acts on, each with `atMs`; `spoke`,
 * whether there was any object at all; and `findings`.
 */
export function readOutput(command, { lines, rest }) {
  const wrongEncoding = complaintAboutEncoding(Buffer.concat([...lines.slice(0, 1).map(({ bytes }) => bytes), rest]));
  if (wrongEncoding) {
    return { events: [], spoke: false, findings: [wrongEncoding] };
  }
  const events = [];
  const findings = [];
  let spoke = false;
  const texts = lines.map(({ bytes }) => decoded(bytes));
  if (texts.includes(undefined)) {
    findings.push(error("a line is not UTF-8", dropped));
  }
  const tooLong = lines.find(({ bytes }) => bytes.length > longestLine_bytes);
  if (tooLong) {
    findings.push(error(`a line has ${tooLong.bytes.length} bytes; 8 MiB are the most`, dropped));
  }
  const readable = texts.map((text, index) => (lines[index].bytes.length > longestLine_bytes ? "" : (text ?? "")));
  for (let index = 0; index < lines.length;) {
    const { event, finding, count } = readLine(readable, index);
    findings.push(...(finding ? [finding] : []));
    if (event) {
      spoke = true;
      const aboutKind = complaintsAboutKind(command, event);
      findings.push(...(aboutKind.length > 0 ? aboutKind : complaintsAbout(event)));
      if (aboutKind.length === 0) {
        events.push({ ...event, atMs: lines[index].atMs });
      }
    }
    index += count;
  }
  return { events, spoke, findings: [...findings, ...complaintsAboutRest(rest)] };
}
