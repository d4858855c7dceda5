import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { fileURLToPath } from "node:url";
import { after, before, describe, it } from "node:test";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { assertShort } from "./support/shorts.mjs";
import { fakeHelper, TestSession } from "./support/test-session.mjs";

const saveButton = { text: "Save chat settings" };
const pollEvery_ms = 5000;

describe("the chat command", () => {
  let test;

  before(async () => {
    test = await TestSession.create("chat-command", {
      helper: fakeHelper("recording-helper"),
      extraEnv: { KESTRUNE_SAMPLE_HELPER_CONSENT_MS: "3000" },
    });
    await test.runSampleHelper("--link");
    await test.switchReplayBufferOn();
    await test.startObs();
    await test.waitForReadiness();
  });
  after(() => test?.close());

  function waitForState(text) {
    return test.dock.waitForWidget({ class: "QLabel", text, visible: true });
  }

  async function polls() {
    return (await test.helperCalls("--poll-triggers")).length;
  }

  it("is off at first", async () => {
    await test.dock.openSection("chatBox");
    await waitForState("Off.");
    await test.session.screenshot("1-off");
  });

  it("asks for the missing consent when it is switched on", async () => {
    await test.dock.click({ class: "QCheckBox", text: "Enabled" });
    await test.dock.click(saveButton);
    const consent = /^One more step: /;
    const { text } = await waitForState(consent);
    const [, address] = /<a href="([^"]+)">/.exec(text);
    assert.equal(
      text,
      `One more step: <a href="${address}">allow Kestrune to read your Twitch chat</a>. ` +
        "It switches on by itself afterwards.",
    );
    await waitFor("the browser", async () => {
      // The link is in the right half of the first line, which the new text may still move.
      const { x, y, width } = await waitForState(consent);
      await test.session.input.click(x + Math.round(width * 0.6), y + 8);
      return (await test.notes("opened-addresses")).includes(address);
    });
    assert.match(await readFile(fileURLToPath(address), "utf8"), /Reading the chat counts as allowed/);
    assert.deepEqual(await test.helperCalls("--chat-set"), [
      ["--chat-set", '{"command":"!rune","cooldown_s":30,"enabled":true,"per_stream_cap":10}'],
    ]);
    assert.equal(await polls(), 0);
    await test.session.screenshot("2-one-more-step");
  });

  it("is on after the consent", async () => {
    // The helper applies the consent after a moment, and the section shows it with the next answer.
    await waitFor("the consent", async () => (await test.runSampleHelper("--chat-get"))[0].granted);
    await test.dock.click(saveButton);
    await waitForState("On: mods can type <b>!rune</b> (0 used this stream).");
    await waitFor("the chat to be polled", async () => (await polls()) > 0);
    await test.session.screenshot("3-on");
  });

  it("makes a Short for a moderator, and only one during the cooldown", async () => {
    await test.runSampleHelper("--say", "mod_ana");
    await waitFor(
      "the credit",
      async () => (await test.dock.widget({ name: "status" })).text === "Clipped from chat by @mod_ana.",
      { every_ms: 20 },
    );
    await test.session.screenshot("4-clipped");
    await test.runSampleHelper("--say", "mod_bob");
    await test.dock.waitForStatus("Clip saved. Making your Short (about 1–3 min)…");

    await test.dock.waitForStatus(/^Your Short is ready: .*\.mp4/, undefined, 90_000);
    const pollsBefore = await polls();
    await waitFor("one more poll", async () => (await polls()) > pollsBefore);
    const runs = await test.helperCalls("--process");
    assert.equal(runs.length, 1);
    const shorts = await test.finishedShorts();
    assert.equal(shorts.length, 1);
    await assertShort(shorts[0], runs[0][1], 30);
    await test.session.screenshot("5-ready");
  });

  it("counts the use", async () => {
    await test.dock.click(saveButton);
    await waitForState("On: mods can type <b>!rune</b> (1 used this stream).");
  });

  it("stops polling when it is switched off", async () => {
    await test.dock.click({ class: "QCheckBox", text: "Enabled" });
    await test.dock.click(saveButton);
    await waitForState("Off.");
    const pollsBefore = await polls();
    await sleep(pollEvery_ms + 2000);
    assert.equal(await polls(), pollsBefore);
  });

  it("lets OBS exit cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
