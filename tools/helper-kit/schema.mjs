// The events' schema, and its complaints in plain words.

import { readFileSync } from "node:fs";
import { error, quoted, warning } from "./findings.mjs";
import { nearest } from "./near.mjs";

const { $defs: definitions, properties } = JSON.parse(
  readFileSync(new URL("../../docs/helper-events.schema.json", import.meta.url), "utf8"),
);

/** All kinds of events. */
export const allKinds = properties.event.enum;

/** All commands that are answered. */
export const allCommands = Object.keys(definitions).filter((name) => name.startsWith("--"));

/** The kinds of events that `command` may answer with. One that is not in the schema may be answered by an error. */
export function kindsOf(command) {
  return definitions[command]?.properties.event.enum ?? ["error"];
}

const types = {
  boolean: { name: "true or false", holds: (value) => typeof value === "boolean" },
  integer: { name: "a whole number", holds: Number.isInteger },
  string: { name: "a string", holds: (value) => typeof value === "string" },
  array: { name: "an array", holds: Array.isArray },
  object: { name: "an object", holds: isObject },
};

/** Whether this is what JSON calls an object. */
export function isObject(value) {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

function resolved(schema) {
  return schema.$ref ? { ...definitions[schema.$ref.slice("#/$defs/".length)], ...schema } : schema;
}

function complaintsAboutText(where, schema, text) {
  const findings = [];
  if (schema.minLength > text.length) {
    findings.push(error(`${where} is empty`));
  }
  if (schema.pattern && !new RegExp(schema.pattern, "u").test(text)) {
    findings.push(error(`${where} must be ${schema.description}, but is ${quoted(JSON.stringify(text))}`));
  }
  const length = [...text].length;
  if (length > schema.maxLength) {
    findings.push(warning(`${where} has ${length} characters; the dock cuts it after ${schema.maxLength}`));
  }
  return findings;
}

function complaintsAboutNumber(where, { minimum, maximum }, number) {
  const limit = number < minimum ? minimum : number > maximum ? maximum : undefined;
  return limit === undefined ? [] : [warning(`${where} is ${number}, out of its range (the limit is ${limit})`)];
}

/** The member that an unknown one is most likely meant to be: one that is missing, and best one of its type. */
function meantBy(name, object, known) {
  const fits = (each) => types[resolved(known[each]).type]?.holds(object[name]);
  const missing = Object.keys(known).filter((each) => !(each in object));
  return nearest(name, missing.filter(fits)) ?? nearest(name, missing);
}

/** The unknown members of `object` that are objects with known members in them. */
function wrappersIn(object, known) {
  const isKnown = (name) => name in known && name !== "event";
  return Object.keys(object).filter(
    (name) => !(name in known) && isObject(object[name]) && Object.keys(object[name]).some(isKnown),
  );
}

/** About the names of members: wrapped ones first, then misspelt, missing and unknown ones. */
function complaintsAboutNames(owner, { properties: known = {}, required = [] }, object) {
  const wrappers = wrappersIn(object, known);
  const unknown = Object.keys(object).filter((name) => !(name in known) && !wrappers.includes(name));
  const meant = new Map(unknown.map((name) => [name, meantBy(name, object, known)]));
  const missing = required.filter((name) => !(name in object) && ![...meant.values()].includes(name));
  const misspelt = unknown.filter((name) => meant.get(name));
  const others = unknown.filter((name) => !meant.get(name));
  const effect = "The dock ignores members that it does not know.";
  if (missing.length === 1 && others.length === 1 && misspelt.length + wrappers.length === 0) {
    return [error(`${owner} lacks the member "${missing[0]}"; is "${others[0]}" meant to be that?`, effect)];
  }
  const place = "event" in known ? ` beside "event"` : " outside it";
  return [
    ...wrappers.map((name) => error(`the members of ${owner} are wrapped in "${name}"; write them${place}`, effect)),
    ...misspelt.map((name) => error(`${owner} has no member "${name}"; did you mean "${meant.get(name)}"?`, effect)),
    ...missing.map((name) => error(`${owner} lacks the member "${name}"`)),
    ...others.map((name) => warning(`${owner} has no member "${name}"; the dock ignores it`)),
  ];
}

/** `prefix` stands before the names of its members, `where` after them. */
function complaintsAboutObject(owner, { prefix, where }, schema, object) {
  const findings = complaintsAboutNames(owner, schema, object);
  for (const [name, member] of Object.entries(schema.properties ?? {})) {
    if (name in object && member.const === undefined) {
      findings.push(...complaintsAboutValue(where, prefix + name, resolved(member), object[name]));
    }
  }
  return findings;
}

/** `where` ends in the event's kind: 'of "recent"'. */
function complaintsAboutValue(where, name, schema, value) {
  const owner = `"${name}" ${where}`;
  const type = types[schema.type];
  if (!type.holds(value)) {
    return [
      error(
        `${owner} must be ${type.name} but is ${quoted(JSON.stringify(value))}`,
        "The dock reads it as if it were missing.",
      ),
    ];
  }
  switch (schema.type) {
    case "string":
      return complaintsAboutText(owner, schema, value);
    case "integer":
      return complaintsAboutNumber(owner, schema, value);
    case "array":
      return value.flatMap((each, index) =>
        complaintsAboutValue(where, `${name}[${index}]`, resolved(schema.items), each),
      );
    case "object":
      return complaintsAboutObject(owner, { prefix: `${name}.`, where }, schema, value);
    default:
      return [];
  }
}

/** What is wrong with an event of a known kind, as findings, misspelt members first. */
export function complaintsAbout(event) {
  const kind = event.event;
  return complaintsAboutObject(`"${kind}"`, { prefix: "", where: `of "${kind}"` }, definitions[kind], event);
}
