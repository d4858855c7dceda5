// What counts as a clean end of OBS.

import assert from "node:assert/strict";
import { TestSession } from "./test-session.mjs";

const limitMs = 10_000;

/** The number of memory leaks that OBS counts at its end when the module is not there: some builds have their own. */
export async function countLeaksWithoutModule() {
  const test = await TestSession.create("without-module", { helper: "", withModule: false });
  try {
    await test.startObs();
    const { memoryLeaks } = await test.stopObs();
    assert.equal(typeof memoryLeaks, "number");
    return memoryLeaks;
  } finally {
    await test.close();
  }
}

/** Asserts that OBS ended by itself, soon, and with no leak more than `ownLeaks`; `end` comes from `stopObs`. */
export function assertCleanEnd(end, ownLeaks) {
  assert.equal(end.exitCode, 0);
  assert.equal(end.memoryLeaks, ownLeaks);
  assert.ok(end.milliseconds < limitMs, `OBS took ${end.milliseconds} ms to end`);
}
