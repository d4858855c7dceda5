// The main job: a fresh OBS, the account, the Replay Buffer, and clips by key and mouse.

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
// Enough for a Short; more would only take longer.
const bufferedSeconds = 4;

describe("a fresh OBS with the module and the sample helper", () => {
  let test;
  let ownLeaks;

  before(async () => {
    ownLeaks = await countLeaksWithoutModule();
    test = await TestSession.create("main-job", {
      helper: fakeHelper("recording-helper"),
      canvas: { width: 640, height: 360, fps: 30 },
      // What is shown until then must be seen, however busy the machine is.
      extraEnv: { KESTRUNE_SAMPLE_HELPER_LINK_MS: "10000" },
    });
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

  it("links the account when the user clicks on Connect account", async () => {
    await test.waitForStatusQueries();
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

  it("enables the Replay Buffer in a profile where it was off", async () => {
    await test.session.obs.waitForLine(/^info: \[kestrune\] enabled Replay Buffer \(120 s\) in the profile$/);
    const profile = await test.session.home.readProfile();
    for (const section of ["SimpleOutput", "AdvOut"]) {
      const { RecRB, RecRBTime } = profile[section];
      assert.deepEqual({ section, RecRB, RecRBTime }, { section, RecRB: "true", RecRBTime: "120" });
    }
    // OBS creates its outputs at start, so the new profile applies after a restart.
    await test.dock.waitForStatus(
      "Replay Buffer is set up but OBS needs to apply it: open Settings and click OK (or restart OBS once).",
      errorColour,
    );
    await test.session.screenshot("3-replay-buffer-set-up");
  });

  it("runs the Replay Buffer after a restart and is ready", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
    await test.startObs();
    await test.waitForReadiness();
    const { outputActive } = await test.websocket.call("GetReplayBufferStatus");
    assert.equal(outputActive, true);
    const clipButton = await test.dock.widget({ name: "clipBtn" });
    assert.equal(clipButton.toolTip, "Save the last few seconds and turn them into a vertical Short.");
    await test.session.screenshot("4-ready");
  });

  /** Calls `request` and asserts that it leads to a correct clip. */
  async function assertClip(request, name) {
    const runsBefore = (await test.helperCalls("--process")).length;
    const shortsBefore = await test.finishedShorts();
    // The buffer's length cannot be queried, and it fills in real time.
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

  it("makes a Short when the hotkey is pressed", async () => {
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

  it("makes a Short when the clip button is clicked", async () => {
    await assertClip(() => test.dock.click({ name: "clipBtn" }), "7-button");
  });

  it("lists the Shorts in its recent clips section", async () => {
    await test.dock.openSection("recentSection");
    const list = await test.dock.waitForWidget({ class: "QListWidget", visible: true });
    assert.equal(list.items.length, 2);
    await test.session.screenshot("8-recent-clips");
  });

  it("ignores a replay saved with OBS's own controls", async () => {
    const status = (await test.dock.widget({ name: "status" })).text;
    const runs = await test.notes("helper-calls");
    const saved = new Promise((resolve) => {
      test.websocket.once("ReplayBufferSaved", ({ savedReplayPath }) => resolve(savedReplayPath));
    });
    await test.websocket.call("SaveReplayBuffer");
    assert.ok((await stat(await saved)).size > 0);

    // Nothing may happen: wait as long as a clip would take to start.
    await sleep(3000);
    assert.deepEqual(await test.notes("helper-calls"), runs);
    assert.equal((await test.dock.widget({ name: "status" })).text, status);
  });

  it("lets OBS exit cleanly", async () => {
    assertCleanEnd(await test.stopObs(), ownLeaks);
  });
});
