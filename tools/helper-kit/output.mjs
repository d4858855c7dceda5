// Reads the events from a run's output, and what is wrong with them.

import { error, quoted, warning } from "./findings.mjs";
import { readLines } from "./lines.mjs";
import { nearest } from "./near.mjs";
import { allKinds, complaintsAbout, isObject, kindsOf } from "./schema.mjs";

function complaintAboutMissingKind(event) {
  const names = Object.keys(event);
  const wrapper = names.find((name) => isObject(event[name]) && "event" in event[name]);
  if (wrapper) {
    return error(`the event is wrapped in "${wrapper}"; write the inner object on its own`);
  }
  const other = names.find((name) => allKinds.includes(event[name])) ?? nearest("event", names);
  return other
    ? error(`an object has no member "event"; is "${other}" meant to be that?`)
    : error(`an object has no member "event": ${quoted(JSON.stringify(event))}`);
}

function complaintsAboutKind(command, event) {
  if (!("event" in event)) {
    return [complaintAboutMissingKind(event)];
  }
  const kind = event.event;
  if (typeof kind !== "string") {
    return [error(`"event" must be a string but is ${quoted(JSON.stringify(kind))}`)];
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
      ? error(`"${kind}" is not an event; did you mean "${meant}"?`)
      : warning(`"${kind}" is not an event of the protocol; the dock ignores it`),
  ];
}

/**
 * Reads the output of a run of `command`. Returns `events`, those that the dock handles, each with `at_ms`; `spoke`,
 * whether there was any object; and `findings`.
 */
export function readOutput(command, run) {
  const { objects, findings } = readLines(run);
  const events = [];
  for (const { event, at_ms } of objects) {
    const aboutKind = complaintsAboutKind(command, event);
    findings.push(...(aboutKind.length > 0 ? aboutKind : complaintsAbout(event)));
    if (aboutKind.length === 0) {
      events.push({ ...event, at_ms });
    }
  }
  return { events, spoke: objects.length > 0, findings };
}
