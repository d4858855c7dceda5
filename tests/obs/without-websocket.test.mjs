import assert from "node:assert/strict";
import { after, before, describe, it } from "node:test";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { clipHotkey, fakeHelper, TestSession } from "./support/test-session.mjs";

describe("OBS without obs-websocket", () => {
  let test;

  before(async () => {
    test = await TestSession.create("without-websocket", { helper: fakeHelper("recording-helper") });
    await test.runSampleHelper("--link");
    await test.switchReplayBufferOn();
    await test.session.home.disableModule("obs-websocket");
    // OBS logs debug lines only on request.
    await test.session.startObs(["--verbose"]);
    await test.session.obs.waitForLine(/\[kestrune\] Kestrune loaded/);
  });
  after(() => test?.close());

  it("is reported by one debug line and one line of the module", () => {
    const ofOthers = /Skipping module|\[kestrune-probe\]/;
    const lines = test.session.obs.lines().filter((line) => line.includes("obs-websocket") && !ofOthers.test(line));
    assert.deepEqual(lines, [
      "debug: Unable to fetch obs-websocket proc handler object. obs-websocket not installed?",
      "info: [kestrune] obs-websocket not available; vendor requests disabled",
    ]);
  });

  it("still clips by hotkey", async () => {
    await test.session.obs.waitForLine(/==== Replay Buffer Start/);
    await waitFor("the status to be read", async () => (await test.helperCalls("--status")).length > 1);
    await sleep(4000);
    await test.session.input.press(...clipHotkey.keys);
    const shorts = await waitFor(
      "a Short",
      async () => {
        const finished = await test.finishedShorts();
        return finished.length > 0 && finished;
      },
      { limit_ms: 90_000 },
    );
    assert.equal(shorts.length, 1);
    await test.session.screenshot("ready");
  });

  it("lets OBS exit cleanly", async () => {
    assert.equal((await test.session.obs.stop()).exitCode, 0);
  });
});
