import assert from "node:assert/strict";
import { it } from "node:test";
import { complaintsAboutProgram } from "../../tools/helper-kit/program.mjs";

it("leaves it to the system to start a program that cannot be read", () => {
  // Whoever runs the tests may be allowed to read every file, but nobody reads a folder like one.
  assert.deepEqual(complaintsAboutProgram(import.meta.dirname), []);
});
