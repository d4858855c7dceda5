// The main job as a user lives it: a fresh OBS, the account, the Replay Buffer, and clips by key and by mouse.

import assert from "node:assert/strict";
import { stat } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { errorColour } from "../../tools/obs/dock.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { assertCleanEnd, countLeaksWithoutModule } from "./support/clean-end.mjs";
import { assertShort } from "./support/shorts.mjs";
import { clipHotkey, fakeHelper, TestSession } from "./support/test-session.mjs";
import { version } from "./support/version.mjs";

const clipSeconds = 30;
// Enough for a whole Short; a longer one only takes longer to make.
const bufferedSeconds = 4;

describe("a fresh OBS with the module and the sample helper", () => {
  let test;
  let ownLeaks;

  before(async () => {
    ownLeaks = await countLeaksWithoutModule();
    test = await TestSession.create("main-job", { helper: fakeHelper("recording-helper") });
    await test.startObs();
  });
  after(() => test?.close());

  it("logs the version and the helper's path in exactly one line", () => {
    const lines = test.session.obs.lines().filter((line) => line.includes("[kestrune] Kestrune loaded"));
    assert.deepEqual(lines, [`info: [kestrune] Kestrune loaded (version ${version}), helper: ${test.helper}`]);
  });

  it("shows the dock in its main window, not connected", async () => {
    const dock = await test.dock.snapshot();
    assert.equal(dock.found, true);
    assert.deepEqual([dock.id, dock.title], ["kestrune", "Kestrune"]);
    assert.equal(dock.docked, true);
    assert.equal(dock.visible, true);

    await test.dock.waitForStatus("Not connected. Click Connect account (one click in your browser).");
    const clipButton = await test.dock.widget({ name: "clipBtn" });
    assert.equal(clipButton.enabled, false);
    assert.equal(clipButton.toolTip, "Connect your Kestrune account first (Connect account below).");
    await test.session.screenshot("1-not-connected");
  });

  it("links the account after a click on the connect button", async () => {
    await test.dock.click({ text: "Connect account" });
    const waiting = /^Finish in your browser \(code ([A-Z]{4}-\d{4})\)\. Waiting…$/;
    await test.dock.waitForStatus(waiting);
    await test.session.screenshot("2-linking");
    const [address] = await waitFor("the browser to be opened", async () => {
      const addresses = await test.notes("opened-addresses");
      return addresses.length > 0 && addresses;
    });
    const page = address.startsWith("file:") ? new URL(address).pathname : address;
    assert.ok((await stat(decodeURIComponent(page))).size > 0);

    await test.dock.waitForWidget({ class: "QLabel", text: "Connected as @sample" });
    assert.equal((await test.dock.widget({ text: "Connect account" })).visible, false);
    assert.equal((await test.helperCalls("--link")).length, 1);
  });

  it("switches the Replay Buffer on in a profile where it was off", async () => {
    await test.session.obs.waitForLine(/^info: \[kestrune\] enabled Replay Buffer \(120 s\) in the profile$/);
    const profile = await test.session.home.readProfile();
    for (const section of ["SimpleOutput", "AdvOut"]) {
      const { RecRB, RecRBTime } = profile[section];
      assert.deepEqual({ section, RecRB, RecRBTime }, { section, RecRB: "true", RecRBTime: "120" });
    }
    // OBS makes its outputs when it starts, so the changed profile takes effect at the next start.
    await test.dock.waitForStatus(
      "Replay Buffer is set up but OBS needs to apply it: open Settings and click OK (or restart OBS once).",
      errorColour,
    );
    await test.session.screenshot("3-replay-buffer-set-up");
  });

  it("runs the Replay Buffer after a restart and is ready", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
    await test.startObs();
    await test.dock.waitForWidget({ name: "clipBtn", enabled: true });
    await test.dock.waitForStatus(
      /^(Replay Buffer on\. Ready to clip|Ready\. Press Clip that or your Kestrune hotkey)\.$/,
    );
    const { outputActive } = await test.websocket.call("GetReplayBufferStatus");
    assert.equal(outputActive, true);
    const clipButton = await test.dock.widget({ name: "clipBtn" });
    assert.equal(clipButton.toolTip, "Save the last few seconds and turn them into a vertical Short.");
    await test.session.screenshot("4-ready");
  });

  /** Waits for the outcome of the clip that `request` asks for, and asserts that it is a right one. */
  async function assertClip(request, name) {
    const runsBefore = (await test.helperCalls("--process")).length;
    const shortsBefore = await test.finishedShorts();
    // The buffer offers no look inside, and it fills at the speed of time.
    await sleep(bufferedSeconds * 1000);
    await request();

    await test.dock.waitForStatus("Clip saved. Making your Short (about 1–3 min)…");
    await test.session.screenshot(`${name}-working`);
    const ready = await test.dock.waitForStatus(/^Your Short is ready: .*\.mp4/, undefined, 90_000);
    const shorts = (await test.finishedShorts()).filter((file) => !shortsBefore.includes(file));
    assert.equal(shorts.length, 1);
    assert.ok(ready.text.includes(path.basename(shorts[0])), ready.text);

    const runs = (await test.helperCalls("--process")).slice(runsBefore);
    assert.equal(runs.length, 1);
    const [, replay, ...choices] = runs[0];
    assert.equal(path.dirname(replay), test.session.home.recordings);
    assert.deepEqual(choices.slice(0, 4), ["--seconds", String(clipSeconds), "--scene", "obs"]);
    await assertShort(shorts[0], replay, clipSeconds);

    const listed = await waitFor("the Short in the recent list", async () => {
      const { items } = await test.dock.widget({ class: "QListWidget" });
      return items[0]?.toolTip === shorts[0] && items;
    });
    assert.equal(listed[0].text, path.basename(shorts[0]));
    await test.session.screenshot(`${name}-ready`);
  }

  it("makes a Short after a press of the hotkey", async () => {
    await assertClip(() => test.session.input.press(...clipHotkey.keys), "5-hotkey");
  });

  it("follows the Replay Buffer when OBS's own controls stop and start it", async () => {
    await test.stopReplayBuffer();
    assert.equal((await test.dock.widget({ name: "clipBtn" })).enabled, false);
    await test.session.screenshot("6-replay-buffer-stopped");

    await test.websocket.call("StartReplayBuffer");
    await test.dock.waitForStatus("Ready. Press Clip that or your Kestrune hotkey.");
    assert.equal((await test.dock.widget({ name: "clipBtn" })).enabled, true);
  });

  it("makes a Short after a click on the clip button", async () => {
    await assertClip(() => test.dock.click({ name: "clipBtn" }), "7-button");
  });

  it("lists the Shorts in its recent clips section", async () => {
    await test.dock.openSection("recentSection");
    const list = await test.dock.waitForWidget({ class: "QListWidget", visible: true });
    assert.equal(list.items.length, 2);
    await test.session.screenshot("8-recent-clips");
  });

  it("leaves a replay alone that OBS's own control saved", async () => {
    const status = (await test.dock.widget({ name: "status" })).text;
    const runs = await test.notes("helper-calls");
    const saved = new Promise((resolve) => {
      test.websocket.once("ReplayBufferSaved", ({ savedReplayPath }) => resolve(savedReplayPath));
    });
    await test.websocket.call("SaveReplayBuffer");
    assert.ok((await stat(await saved)).size > 0);

    // Nothing may follow, and nothing can be waited for: give it the time that a clip would have taken to start.
    await sleep(3000);
    assert.deepEqual(await test.notes("helper-calls"), runs);
    assert.equal((await test.dock.widget({ name: "status" })).text, status);
  });

  it("lets OBS end cleanly", async () => {
    assertCleanEnd(await test.stopObs(), ownLeaks);
  });
});
