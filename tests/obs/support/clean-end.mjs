import assert from "node:assert/strict";
import { TestSession } from "./test-session.mjs";

const limit_ms = 10_000;

/** The memory leaks that OBS reports without the module: some builds have their own. */
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

/** Asserts that OBS exited normally and soon, with at most `ownLeaks` leaks; `end` comes from `stopObs`. */
export function assertCleanEnd(end, ownLeaks) {
  assert.equal(end.exitCode, 0);
  assert.equal(end.memoryLeaks, ownLeaks);
  assert.ok(end.milliseconds < limit_ms, `OBS took ${end.milliseconds} ms to exit`);
}
