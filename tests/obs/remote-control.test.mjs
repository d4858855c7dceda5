// Vendor requests over obs-websocket, from a client that knows nothing of this module.

import assert from "node:assert/strict";
import { writeFile } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { placeClipScript, runClipScript } from "../support/clip-script.mjs";
import { assertCleanEnd, countLeaksWithoutModule } from "./support/clean-end.mjs";
import { assertShort } from "./support/shorts.mjs";
import { clipHotkey, fakeHelper, TestSession } from "./support/test-session.mjs";
import { version } from "./support/version.mjs";

const secondBinding = { shift: false, control: false, alt: true, command: false, key: "OBS_KEY_F7" };
const password = "a password with ünïcode";

describe("a remote control of OBS with the module", () => {
  let test;
  let ownLeaks;
  let script;

  before(async () => {
    ownLeaks = await countLeaksWithoutModule();
    test = await TestSession.create("remote-control", { helper: fakeHelper("recording-helper"), password });
    await test.switchReplayBufferOn();
    await bindClipHotkey();
    await test.startObs();
  });
  after(() => test?.close());

  function vendorRequest(requestType) {
    return test.websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType });
  }

  async function answerTo(requestType) {
    return (await vendorRequest(requestType)).responseData;
  }

  async function waitForReplayBuffer() {
    const isOn = async () => (await test.websocket.call("GetReplayBufferStatus")).outputActive;
    await waitFor("the Replay Buffer", isOn);
  }

  function bindClipHotkey(...records) {
    return test.session.home.changeSceneCollection(({ modules }) => {
      modules.kestrune_hotkey = records;
    });
  }

  async function restartWithBindings(...records) {
    assert.equal((await test.stopObs()).exitCode, 0);
    await bindClipHotkey(...records);
    await test.startObs();
  }

  it("is mentioned in exactly one log line", () => {
    const lines = test.session.obs.lines().filter((line) => line.includes("[kestrune] obs-websocket"));
    assert.deepEqual(lines, ['info: [kestrune] obs-websocket vendor "Kestrune" registered (ClipThat, GetStatus)']);
  });

  it("gets the status, with an empty hotkey when none is bound", async () => {
    const { vendorName, requestType, responseData } = await vendorRequest("GetStatus");
    assert.deepEqual({ vendorName, requestType }, { vendorName: "Kestrune", requestType: "GetStatus" });
    assert.deepEqual(responseData, { version, dock: true, replay_buffer_active: false, hotkey: "" });
  });

  const getStatus = { vendorName: "Kestrune", requestType: "GetStatus" };

  // docs/remote-control.md lists these.
  const refusals = [
    ["a vendor that does not exist", "CallVendorRequest", { ...getStatus, vendorName: "kestrune" }, 600],
    ["a request that does not exist", "CallVendorRequest", { vendorName: "Kestrune", requestType: "clipthat" }, 600],
    ["a request that is sent directly", "ClipThat", undefined, 204],
    ["no data", "CallVendorRequest", undefined, 301],
    ["no vendor", "CallVendorRequest", { requestType: "ClipThat" }, 300],
    ["a vendor that is no text", "CallVendorRequest", { vendorName: 1, requestType: "ClipThat" }, 401],
    ["data that is no object", "CallVendorRequest", { ...getStatus, requestData: 5 }, 401],
    ["an empty vendor", "CallVendorRequest", { vendorName: "", requestType: "ClipThat" }, 403],
    ["a hotkey that does not exist", "TriggerHotkeyByName", { hotkeyName: "kestrune.clip" }, 600],
  ];
  for (const [what, request, data, code] of refusals) {
    it(`gets obs-websocket's own error ${code} for ${what}`, async () => {
      await assert.rejects(test.websocket.call(request, data), { code });
    });
  }

  it("may send data that nobody reads", async () => {
    const request = { ...getStatus, requestData: { seconds: 5 } };
    assert.equal((await test.websocket.call("CallVendorRequest", request)).responseData.dock, true);
  });

  it("has a sample script that needs the password", async () => {
    script = await placeClipScript(test.session.folder);
    for (const wrong of [undefined, "wrong"]) {
      const { exitCode, errorOutput } = await runClipScript(script, test.websocketAddress, wrong);
      assert.match(errorOutput, /^The password is wrong or missing: .*\n$/);
      assert.equal(exitCode, 1);
    }
    assert.deepEqual(await test.helperCalls("--link"), []);
  });

  it("gets every answer to a thousand requests, one by one and all at once", async () => {
    const expected = await answerTo("GetStatus");
    for (let count = 0; count < 1000; count += 1) {
      assert.deepEqual(await answerTo("GetStatus"), expected);
    }
    const answers = await Promise.all(Array.from({ length: 1000 }, () => answerTo("GetStatus")));
    assert.deepEqual(answers, Array(1000).fill(expected));
  });

  it("starts linking an account when there is none", async () => {
    assert.deepEqual(await answerTo("ClipThat"), { ok: true, replay_buffer_active: false });
    await test.dock.waitForWidget({ class: "QLabel", text: "Connected as @sample" });
    assert.equal((await test.helperCalls("--link")).length, 1);
    await waitForReplayBuffer();
  });

  it("makes a Short with the Replay Buffer on", async () => {
    await test.dock.waitForWidget({ name: "clipBtn", enabled: true });
    // Enough for a Short; the buffer's length cannot be queried, and it fills in real time.
    await sleep(4000);
    assert.deepEqual(await answerTo("ClipThat"), { ok: true, replay_buffer_active: true });
    await test.dock.waitForStatus(/^Your Short is ready: .*\.mp4/, undefined, 90_000);
    const runs = await test.helperCalls("--process");
    assert.equal(runs.length, 1);
    const shorts = await test.finishedShorts();
    assert.equal(shorts.length, 1);
    await assertShort(shorts[0], runs[0][1], 30);
  });

  /** Waits until the helper has been given `count` clips in all. A busy machine saves a replay slowly. */
  function waitForClips(count) {
    return waitFor(`${count} clips`, async () => (await test.helperCalls("--process")).length >= count, {
      limit_ms: 120_000,
    });
  }

  it("makes one clip of requests that come while one is being saved, and answers each", async () => {
    await writeFile(path.join(test.session.folder, "no-shorts"), "");
    const answers = await Promise.all(Array.from({ length: 5 }, () => answerTo("ClipThat")));
    assert.deepEqual(answers, Array(5).fill({ ok: true, replay_buffer_active: true }));
    await waitForClips(2);
    // Long enough for the others to be saved, too.
    await sleep(3000);
    assert.equal((await test.helperCalls("--process")).length, 2);
  });

  it("makes a clip by the name of the hotkey", async () => {
    await test.websocket.call("TriggerHotkeyByName", { hotkeyName: "kestrune.clip_that" });
    await waitForClips(3);
  });

  it("makes a clip by the sample script", async () => {
    const { exitCode, output, errorOutput } = await runClipScript(script, test.websocketAddress, password);
    assert.equal(output, "{ ok: true, replay_buffer_active: true }\n", errorOutput);
    assert.equal(exitCode, 0);
    await waitForClips(4);
    await test.waitForIdleHelper();
  });

  it("starts a stopped Replay Buffer instead of making a Short", async () => {
    await test.stopReplayBuffer();
    assert.deepEqual(await answerTo("ClipThat"), { ok: true, replay_buffer_active: false });
    await waitForReplayBuffer();
    await test.dock.waitForStatus("Replay Buffer on. Ready to clip.");
    assert.equal((await answerTo("GetStatus")).replay_buffer_active, true);
    assert.equal((await test.helperCalls("--process")).length, 4);
  });

  it("gets the text of one binding", async () => {
    await restartWithBindings(clipHotkey.record);
    assert.equal((await answerTo("GetStatus")).hotkey, "Ctrl+Shift+C");
  });

  it("gets the texts of two bindings, joined", async () => {
    await restartWithBindings(clipHotkey.record, secondBinding);
    assert.equal((await answerTo("GetStatus")).hotkey, "Ctrl+Shift+C, Alt+F7");
  });

  it("may keep sending requests until OBS has exited", async () => {
    await waitForReplayBuffer();
    // Calls never return once the connection is closed.
    const closed = new Promise((resolve) => test.websocket.once("ConnectionClosed", () => resolve("closed")));
    let answers = 0;
    const askOnAndOn = async (requestType) => {
      for (;;) {
        const outcome = await Promise.race([answerTo(requestType).then(() => "answer", outcomeOfError), closed]);
        if (outcome === "closed") {
          return;
        }
        answers += outcome === "answer" ? 1 : 0;
      }
    };
    const asking = Promise.all(["GetStatus", "GetStatus", "ClipThat"].map(askOnAndOn));
    await waitFor("a stream of answers", () => answers > 300);
    // `stopObs` would disconnect first.
    const [end] = await Promise.all([test.session.obs.stop(), asking]);
    assertCleanEnd(end, ownLeaks);
  });
});

/** obs-websocket's own answer while OBS exits: "notReady" or "closed". Other errors are thrown. */
function outcomeOfError(error) {
  if (error.code === 207) {
    return "notReady";
  }
  if (error.message === "Not connected") {
    return "closed";
  }
  throw error;
}
