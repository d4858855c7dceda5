// The module must not keep OBS from exiting, crash it at exit, or leak, whatever its helper runs do.

import assert from "node:assert/strict";
import { after, before, describe, it } from "node:test";
import { waitFor } from "../../tools/obs/wait.mjs";
import { assertCleanEnd, countLeaksWithoutModule } from "./support/clean-end.mjs";
import { fakeHelper, TestSession } from "./support/test-session.mjs";

describe("the exit of OBS", () => {
  let test;
  let ownLeaks;

  before(async () => {
    ownLeaks = await countLeaksWithoutModule();
  });
  after(() => test?.close());

  it("is clean when all helper runs have ended", async () => {
    test = await TestSession.create("exit-idle", { helper: fakeHelper("recording-helper") });
    await test.startObs();
    await waitFor("the first list of recent clips", async () => (await test.helperCalls("--recent")).length > 0);
    await test.waitForIdleHelper();
    assertCleanEnd(await test.stopObs(), ownLeaks);
    await test.close();
  });

  it("is clean during helper runs that are talking, in the middle of a line, or silent", async () => {
    test = await TestSession.create("exit-with-runs", { helper: fakeHelper("endless-helper") });
    await test.startObs();
    await test.dock.waitForStatus("Not connected. Click Connect account (one click in your browser).");
    await test.dock.click({ text: "Connect account" });
    const processes = await waitFor("runs of each kind", async () => {
      const runs = (await test.notes("helper-runs")).map((line) => line.split(" "));
      const kinds = new Set(runs.map(([command]) => command));
      return ["--status", "--recent", "--link"].every((kind) => kinds.has(kind)) && runs;
    });
    assertCleanEnd(await test.stopObs(), ownLeaks);

    for (const [command, pid] of processes) {
      assert.throws(() => process.kill(Number(pid), 0), { code: "ESRCH" }, `${command} still runs`);
    }
    await test.close();
  });
});
