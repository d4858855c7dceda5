import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { after, before, describe, it } from "node:test";
import { readyStatus } from "../../tools/obs/dock.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { fakeHelper, TestSession } from "./support/test-session.mjs";

const captureText = "Press keys… (Esc cancels)";
const keys = ["control", "shift", "f8"];
const record = { shift: true, control: true, alt: false, command: false, key: "OBS_KEY_F8" };
// OBS omits what is false.
const recordByObs = { shift: true, control: true, key: "OBS_KEY_F8" };
const otherRecord = { shift: false, control: true, alt: false, command: false, key: "OBS_KEY_F9" };

describe("the clip hotkey", () => {
  let test;

  before(async () => {
    test = await TestSession.create("hotkey", { helper: fakeHelper("linked-helper") });
    await test.session.home.changeSceneCollection(({ modules }) => delete modules.kestrune_hotkey);
    await test.switchReplayBufferOn();
    await test.startObs();
    await test.waitForReadiness();
    await test.dock.openSection("hotkeySection");
  });
  after(() => test?.close());

  const label = (text) => test.dock.waitForWidget({ name: "hotkeyLabel", text });

  async function readJson(file) {
    return JSON.parse(await readFile(file, "utf8"));
  }

  /** The hotkey's bindings in OBS's own data. */
  async function savedByObs() {
    return (await readJson(test.session.home.sceneFile)).modules.kestrune_hotkey;
  }

  async function restart(changeFiles = async () => {}) {
    assert.equal((await test.stopObs()).exitCode, 0);
    await changeFiles(test.session.home);
    await test.startObs();
    await test.waitForReadiness();
    await test.dock.openSection("hotkeySection");
  }

  async function assertClips(...pressed) {
    const before = (await test.helperCalls("--process")).length;
    await test.session.input.press(...pressed);
    await waitFor("a clip", async () => (await test.helperCalls("--process")).length > before);
    await test.dock.waitForStatus("Your Short is ready: short.mp4");
    assert.equal((await test.helperCalls("--process")).length, before + 1);
  }

  it("is unset at first", async () => {
    await label("Hotkey: not set");
    const offer = await test.dock.widget({ text: "Use Ctrl+Shift+C" });
    assert.deepEqual([offer.visible, offer.toolTip], [true, "Suggested default"]);
    await test.session.screenshot("1-not-set", await test.dock.area());
  });

  it("stays unset when Escape ends the capture", async () => {
    await test.dock.click({ text: "Set hotkey" });
    await test.dock.waitForWidget({ text: captureText });
    await test.session.screenshot("2-capture", await test.dock.area());
    await test.session.input.tap("escape");
    await test.dock.waitForWidget({ text: "Set hotkey" });
    await label("Hotkey: not set");
    assert.match((await test.dock.widget({ name: "status" })).text, readyStatus);
  });

  it("waits for the rest of the combination after a bare modifier", async () => {
    await test.dock.click({ text: "Set hotkey" });
    await test.dock.waitForWidget({ text: captureText });
    await test.session.input.press("shift");
    await test.session.input.press("control");
    // If the press ended the capture, it would have done so by now.
    await sleep(500);
    assert.equal((await test.dock.widget({ text: captureText })).visible, true);
    await label("Hotkey: not set");
  });

  it("is the combination typed next", async () => {
    await test.session.input.tap(...keys);
    await test.dock.waitForStatus("Hotkey set: Ctrl+Shift+F8 (also in Settings → Hotkeys).");
    await label("Hotkey: Ctrl+Shift+F8");
    await test.dock.waitForWidget({ text: "Change", visible: true });
    assert.equal((await test.dock.widget({ text: "Use Ctrl+Shift+C" })).visible, false);
    await test.session.screenshot("3-set", await test.dock.area());
    const { hotkey, hotkey_offered } = await readJson(test.session.home.preferencesFile);
    assert.deepEqual({ hotkey, hotkey_offered }, { hotkey: [record], hotkey_offered: true });
  });

  it("can be a key that OBS has a shortcut for", async () => {
    await test.dock.click({ text: "Change" });
    await test.dock.waitForWidget({ text: captureText });
    // OBS's shortcut for the full screen.
    await test.session.input.tap("f11");
    await label("Hotkey: F11");
    await test.dock.click({ text: "Change" });
    await test.dock.waitForWidget({ text: captureText });
    await test.session.input.tap(...keys);
    await label("Hotkey: Ctrl+Shift+F8");
  });

  it("clips", async () => {
    await assertClips(...keys);
  });

  it("clips after a restart", async () => {
    await restart();
    assert.deepEqual(await savedByObs(), [recordByObs]);
    await label("Hotkey: Ctrl+Shift+F8");
    await assertClips(...keys);
  });

  it("comes from the preferences file when OBS's own data is gone, and clips", async () => {
    await restart((home) => home.changeSceneCollection(({ modules }) => delete modules.kestrune_hotkey));
    await label("Hotkey: Ctrl+Shift+F8");
    await assertClips(...keys);
  });

  it("comes from OBS's own data when the preferences file has another one", async () => {
    await restart((home) => home.changePreferences((preferences) => (preferences.hotkey = [otherRecord])));
    assert.deepEqual(await savedByObs(), [recordByObs]);
    await label("Hotkey: Ctrl+Shift+F8");
    const runs = (await test.helperCalls("--process")).length;
    await test.session.input.press("control", "f9");
    await assertClips(...keys);
    assert.equal((await test.helperCalls("--process")).length, runs + 1);
  });

  it("lets OBS exit cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
