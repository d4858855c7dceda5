// The events' schema, and its complaints in plain words.

import { readFileSync } from "node:fs";
import { Ajv2020 } from "ajv/dist/2020.js";
import { error, warning } from "./findings.mjs";

const schema = JSON.parse(readFileSync(new URL("../../docs/helper-events.schema.json", import.meta.url), "utf8"));
const ajv = new Ajv2020({ allErrors: true, verbose: true });
ajv.addSchema(schema, "helper-events");

function validatorOf(definition) {
  return ajv.getSchema(`helper-events#/$defs/${definition}`);
}

export const isEvent = ajv.getSchema("helper-events");

export function isAnswerTo(command, event) {
  return validatorOf(command)(event);
}

export function kindsOf(command) {
  return schema.$defs[command].anyOf.map(({ $ref }) => $ref.slice("#/$defs/".length));
}

export const allCommands = Object.keys(schema.$defs).filter((name) => name.startsWith("--"));

export const allKinds = schema.anyOf.map(({ $ref }) => $ref.slice("#/$defs/".length));

const typeNames = {
  boolean: "true or false",
  integer: "a whole number",
  string: "a text",
  array: "a list",
  object: "an object",
};

function shown(value) {
  const text = JSON.stringify(value);
  return text.length > 60 ? `${text.slice(0, 60)}…` : text;
}

/** "/items/0/path" becomes items[0].path. */
function memberName(instancePath) {
  const [first, ...rest] = instancePath.split("/").slice(1);
  return rest.reduce((name, part) => name + (/^\d+$/.test(part) ? `[${part}]` : `.${part}`), first);
}

function finding(kind, { keyword, instancePath, params, data }) {
  const where = instancePath ? `"${memberName(instancePath)}" of "${kind}"` : `"${kind}"`;
  switch (keyword) {
    case "type":
      return error(
        `${where} must be ${typeNames[params.type]} but is ${shown(data)}; the dock reads it as if it were missing`,
      );
    case "required":
      return error(`${where} lacks the member "${params.missingProperty}"`);
    case "minLength":
      return error(`${where} is empty`);
    case "pattern":
      return error(`${where} must be an address that begins with its scheme, as in https://…, but is ${shown(data)}`);
    case "minimum":
    case "maximum":
      return warning(`${where} is ${data}, beyond ${params.limit}, where its range ends`);
    case "maxLength":
      return warning(`${where} has ${[...data].length} characters; the dock cuts it after ${params.limit}`);
    default:
      throw new Error(`the schema uses "${keyword}", which has no words here`);
  }
}

/** What is wrong with an event of a known kind, as findings. */
export function complaintsAbout(event) {
  const validate = validatorOf(event.event);
  if (validate(event)) {
    return [];
  }
  // These only repeat what their branches report.
  const telling = validate.errors.filter(({ keyword }) => keyword !== "anyOf" && keyword !== "const");
  const findings = telling.map((failure) => finding(event.event, failure));
  // Branches may report the same.
  return [...new Map(findings.map((each) => [each.text, each])).values()];
}
