// Reads the JSON objects from a run's output, and what is wrong with its lines.

import { error, quoted, warning } from "./findings.mjs";
import { linesOfOneText, slipOf, textBeforeEvent } from "./json-slips.mjs";
import { isObject } from "./schema.mjs";

// Qt skips a byte order mark before JSON, and so does this.
const utf8 = new TextDecoder("utf-8", { fatal: true });
const maxLine_bytes = 5 * 1024 * 1024;
const dropped = "The dock drops such a line.";

/** Findings with the same `key` become one. */
function complaintAboutNonJson(text) {
  const before = textBeforeEvent(text);
  if (before !== undefined) {
    const cause = `there is text before the event on its line: ${JSON.stringify(before)} in`;
    return { ...error(`${cause} ${quoted(text)}`, dropped), key: "before" };
  }
  if (text.startsWith("{")) {
    const cause = `a line is not JSON: ${slipOf(text)}:`;
    return { ...error(`${cause} ${quoted(text)}`, dropped), key: cause };
  }
  // Without a brace it is a stray print, not a broken event.
  const stray = `a line is not JSON; the dock drops it, log to a file instead: ${quoted(text)}`;
  return { ...warning(stray), key: "stray" };
}

function complaintAboutNonObject(text, value) {
  if (typeof value === "string" && /^\s*\{/.test(value)) {
    return error(`an event was encoded twice: it is a text that holds JSON: ${quoted(text)}`, dropped);
  }
  return Array.isArray(value) && value.some(isObject)
    ? error(`a line is a list; write each event on a line of its own, without brackets: ${quoted(text)}`, dropped)
    : error(`a line is JSON but not an object: ${quoted(text)}`, dropped);
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

function complaintsAboutRest(text) {
  if (text.trim() === "") {
    return [];
  }
  return [
    text.includes("\r")
      ? error("lines end with a carriage return only; the dock waits for a newline", "It reads none of them.")
      : error(`the last line has no newline at its end, so the dock never reads it: ${quoted(text.trim())}`),
  ];
}

/** UTF-16 shows as a NUL beside every letter. */
function isUtf16(bytes) {
  return bytes.length > 1 && (bytes[0] === 0 || bytes[1] === 0 || bytes.readUInt16BE() === 0xfffe);
}

/** The text of a line that the dock reads, or what is wrong with it. */
function decoded({ bytes }) {
  if (bytes.length > maxLine_bytes) {
    return { text: "", finding: error(`a line has ${bytes.length} bytes; 5 MiB are the most`, dropped) };
  }
  try {
    return { text: utf8.decode(bytes).trim() };
  } catch {
    return { text: "", finding: error("a line is not UTF-8", dropped) };
  }
}

function merged(findings) {
  const groups = new Map();
  for (const finding of findings) {
    const key = finding.key ?? finding.text;
    const { first, count } = groups.get(key) ?? { first: finding, count: 0 };
    groups.set(key, { first, count: count + 1 });
  }
  return [...groups.values()].map(({ first, count }) =>
    count === 1 ? first : { ...first, text: `${first.text} (and ${count - 1} more like it)` },
  );
}

/** Returns `objects`, each an `event` with the time `at_ms` of its line, and `findings`. */
export function readLines({ lines, rest }) {
  if (isUtf16(Buffer.concat([...lines.slice(0, 1).map(({ bytes }) => bytes), rest]))) {
    return { objects: [], findings: [error("the output is UTF-16; write UTF-8")] };
  }
  const read = lines.map(decoded);
  const objects = [];
  const findings = read.flatMap(({ finding }) => finding ?? []);
  // JSON that goes over several lines may end where the last newline is missing.
  const texts = [...read.map(({ text }) => text), rest.toString().trim()];
  let index = 0;
  while (index < lines.length) {
    const { event, finding, count } = readLine(texts, index);
    findings.push(...(finding ? [finding] : []));
    objects.push(...(event ? [{ event, at_ms: lines[index].at_ms }] : []));
    index += count;
  }
  const unread = index === lines.length ? complaintsAboutRest(rest.toString()) : [];
  return { objects, findings: [...merged(findings), ...unread] };
}
