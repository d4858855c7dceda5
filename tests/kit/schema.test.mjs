// The schema of the events against the protocol's own page, and against events that are wrong.

import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { describe, it } from "node:test";
import { Ajv2020 } from "ajv/dist/2020.js";
import { commands, futureCommand } from "../../tools/helper-kit/commands.mjs";
import { allCommands, allKinds, complaintsAbout, isObject, kindsOf } from "../../tools/helper-kit/schema.mjs";

const schema = JSON.parse(await readFile(new URL("../../docs/helper-events.schema.json", import.meta.url), "utf8"));
const ajv = new Ajv2020({ allErrors: true });
ajv.addSchema(schema, "events");
const isEvent = ajv.getSchema("events");
const isAnswerTo = (command, event) => ajv.getSchema(`events#/$defs/${command}`)(event);

/** Whether the kit finds nothing wrong with this event by its own reading of the schema. */
function passesKit(event) {
  const isKnown = isObject(event) && allKinds.includes(event.event);
  return isKnown && complaintsAbout(event).every(({ text }) => / has no member /.test(text));
}

const page = await readFile(new URL("../../docs/helper-protocol.md", import.meta.url), "utf8");

/** The objects in the page's JSON blocks; lines of one object are joined. */
const examples = [...page.matchAll(/^```json\n([^]*?)^```$/gm)].flatMap(([, block]) => {
  const objects = block
    .trim()
    .replaceAll(/\}\n\{/g, "}\0{")
    .split("\0");
  return objects.map((text) => JSON.parse(text));
});

describe("the schema and docs/helper-protocol.md", () => {
  it("agree on every example event", () => {
    const events = examples.filter((example) => "event" in example);
    assert.ok(events.length >= 8, `only ${events.length} examples were found`);
    for (const event of events) {
      assert.ok(passesKit(event), JSON.stringify(event));
      assert.ok(isEvent(event), `${JSON.stringify(event)}: ${JSON.stringify(isEvent.errors)}`);
      assert.ok(
        allCommands.some((command) => isAnswerTo(command, event)),
        JSON.stringify(event),
      );
    }
  });

  it("agree on the commands and their answers", () => {
    const table = page.slice(page.indexOf("## Commands"), page.indexOf("### --status"));
    const rows = [...table.matchAll(/^\| `(--[a-z-]+).*\| (.*) \|$/gm)];
    assert.deepEqual(rows.map(([, command]) => command).sort(), [...allCommands].sort());
    assert.deepEqual(Object.keys(commands).sort(), [...allCommands, futureCommand].sort());
    for (const [, command, answers] of rows) {
      assert.deepEqual([...answers.matchAll(/`(\w+)`/g)].map(([, kind]) => kind).sort(), kindsOf(command).sort());
    }
  });

  it("agree that unknown members are ignored", () => {
    assert.ok(isEvent({ event: "pending", colour: "red" }));
    assert.ok(passesKit({ event: "pending", colour: "red" }));
  });

  it("have every event read after some command", () => {
    const read = new Set(allCommands.flatMap(kindsOf));
    assert.deepEqual([...read].sort(), [...allKinds].sort());
  });
});

describe("the kit", () => {
  it("knows every word that the schema uses", () => {
    const known = ["description", "default", "type", "properties", "required", "items", "$ref", "const", "enum"];
    const limits = ["minLength", "maxLength", "pattern", "minimum", "maximum"];
    const words = new Set();
    const collect = (each) => {
      Object.keys(each).forEach((word) => words.add(word));
      Object.values(each.properties ?? {}).forEach(collect);
      [each.items].filter(Boolean).forEach(collect);
    };
    Object.values(schema.$defs).forEach(collect);
    assert.deepEqual(
      [...words].filter((word) => ![...known, ...limits].includes(word)),
      [],
    );
  });
});

describe("tests that try every command", () => {
  for (const file of ["unit/dock/hostile_members.cpp", "fuzz/dock_events.cpp"]) {
    it(`do: ${file}`, async () => {
      const source = await readFile(new URL(`../${file}`, import.meta.url), "utf8");
      assert.deepEqual(
        allCommands.filter((command) => !source.includes(`"${command}"`)),
        [],
      );
    });
  }
});

describe("the schema refuses", () => {
  const wrongs = [
    ["what is no object", [{ event: "pending" }]],
    ["an object without a kind", {}],
    ["a kind that is no text", { event: 1 }],
    ["an unknown kind", { event: "hello" }],
    ["a status whose switch is a text", { event: "status", linked: "true" }],
    ["a status whose list is a text", { event: "status", layouts: "podcast" }],
    ["a status whose list holds numbers", { event: "status", fonts: [1] }],
    ["a code without an address", { event: "code", code: "ABCD-1234" }],
    ["a code whose address has no scheme", { event: "code", url: "accounts.example", code: "ABCD-1234" }],
    ["a Short that is a text instead of a list", { event: "done", formatted: "a.mp4" }],
    ["a Short whose note is a number", { event: "done", note: 1 }],
    ["an error without a text", { event: "error" }],
    ["an error whose relink is a number", { event: "error", error: "no", relink: 1 }],
    ["clips that are texts", { event: "recent", items: ["a.mp4"] }],
    ["a clip without a path", { event: "recent", items: [{ name: "a.mp4" }] }],
    ["a folder that is a list", { event: "recent", folder: ["D:/Shorts"] }],
    ["a preview whose path is null", { event: "preview", path: null }],
    ["a cooldown with a fraction", { event: "chat", cooldown_s: 12.5 }],
    ["a cooldown that is a text", { event: "chat", cooldown_s: "30" }],
    ["a cap beyond its range", { event: "chat", per_stream_cap: 101 }],
    ["a trigger that is a text", { event: "triggers", triggers: ["ana"] }],
    ["an update that is a text", { event: "update", update: "1.0.7" }],
    ["a version that is a number", { event: "update", update: true, latest: 1.1 }],
    ["a percentage that is a text", { event: "progress", phase: "download", percent: "42" }],
    ["a login with an @", { event: "status", linked: true, login: "@ana" }],
    ["a version with a v", { event: "update", update: true, latest: "v1.0.7" }],
    ["a Short by its address", { event: "done", formatted: ["file:///a.mp4"] }],
    ["a consent nowhere", { event: "chat", consent_url: "accounts.example" }],
    ["an empty key", { event: "status", linked: true, fonts: [""] }],
    ["an installer without a path", { event: "downloaded", latest: "1.0.7" }],
    ["a text that is too long", { event: "error", error: "x".repeat(4001) }],
  ];
  for (const [what, event] of wrongs) {
    it(what, () => {
      assert.equal(isEvent(event), false);
      assert.equal(passesKit(event), false);
    });
  }

  it("one event with few words, about its own kind alone", () => {
    isEvent({ event: "status", linked: "true" });
    // One of the two says only that this kind's definition does not hold.
    assert.deepEqual(
      isEvent.errors.map(({ instancePath, keyword }) => [instancePath, keyword]),
      [
        ["/linked", "type"],
        ["", "if"],
      ],
    );
  });

  it("an event after a command that does not read it", () => {
    assert.equal(isAnswerTo("--status", { event: "error", error: "no network" }), false);
    assert.equal(isAnswerTo("--link", { event: "error", error: "no network" }), true);
  });
});
