import assert from "node:assert/strict";
import { after, before, describe, it } from "node:test";
import { errorColour } from "../../tools/obs/dock.mjs";
import { waitFor } from "../../tools/obs/wait.mjs";
import { clipHotkey, fakeHelper, TestSession } from "./support/test-session.mjs";

describe("a clip hotkey that conflicts with another", () => {
  let test;

  before(async () => {
    test = await TestSession.create("hotkey-conflict", { helper: fakeHelper("linked-helper") });
    await test.session.home.changeSceneCollection(({ modules }) => delete modules.kestrune_hotkey);
    await test.session.home.changeProfile((profile) => {
      const bindings = { bindings: [clipHotkey.record] };
      profile.Hotkeys = { "OBSBasic.StartRecording": JSON.stringify(bindings) };
    });
    await test.switchReplayBufferOn();
    await test.startObs();
    await test.waitForReadiness();
    await test.dock.openSection("hotkeySection");
  });
  after(() => test?.close());

  it("is mentioned before the click on the default", async () => {
    const offer = await test.dock.waitForWidget({ text: "Use Ctrl+Shift+C (in use!)", visible: true });
    assert.equal(offer.toolTip, "Warning: Ctrl+Shift+C is already used by Start Recording");
    await test.session.screenshot("1-offer", await test.dock.area());
  });

  it("is bound after it, with a warning in red", async () => {
    await test.dock.click({ text: "Use Ctrl+Shift+C (in use!)" });
    await test.dock.waitForStatus(
      'Hotkey set: Ctrl+Shift+C, but it is also used by "Start Recording"; both will fire. ' +
        "Pick another with Set hotkey.",
      errorColour,
    );
    await test.dock.waitForWidget({ name: "hotkeyLabel", text: "Hotkey: Ctrl+Shift+C" });
    assert.equal((await test.dock.widget({ text: "Use Ctrl+Shift+C (in use!)" })).visible, false);
    await test.session.screenshot("2-set", await test.dock.area());
  });

  it("fires together with the other hotkey", async () => {
    await test.session.input.press(...clipHotkey.keys);
    await waitFor("a clip", async () => (await test.helperCalls("--process")).length === 1);
    const isRecording = async () => (await test.websocket.call("GetRecordStatus")).outputActive;
    await waitFor("the recording", isRecording);
    await test.websocket.call("StopRecord");
    await waitFor("the end of the recording", async () => !(await isRecording()));
  });

  it("lets OBS exit cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
