import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { after, before, describe, it } from "node:test";
import { waitFor } from "../../tools/obs/wait.mjs";
import { fakeHelper, TestSession } from "./support/test-session.mjs";

const otherProgramsKeys = { written_by_another_program: { list: [1, "two", null], text: "ä" } };

describe("the layout and caption choices", () => {
  let test;

  before(async () => {
    test = await TestSession.create("choices", { helper: fakeHelper("recording-helper") });
    await test.session.home.changePreferences((preferences) => {
      preferences.seconds = 90;
      Object.assign(preferences, otherProgramsKeys);
    });
    await startObsAndOpenSection();
  });
  after(() => test?.close());

  async function startObsAndOpenSection() {
    await test.startObs();
    // This text takes two lines and moves everything below.
    await test.dock.waitForStatus("Not connected. Click Connect account (one click in your browser).");
    await test.dock.openSection("styleSection");
  }

  const readPreferences = async () => JSON.parse(await readFile(test.session.home.preferencesFile, "utf8"));

  const shownPicture = async () => (await test.dock.waitForWidget({ name: "preview", visible: true })).picture;

  /** Waits for a preview that differs from `before`, after `calls` runs of which the last had these choices. */
  async function waitForPreview(before, calls, { layout, style, font, position }) {
    await waitFor("another preview", async () => (await shownPicture()).hash !== before.hash);
    const previews = await test.helperCalls("--preview");
    assert.equal(previews.length, calls);
    const choices = ["--layout", layout, "--style", style, "--font", font, "--caption-position", position];
    assert.deepEqual(previews.at(-1), ["--preview", ...choices]);
  }

  it("start with the first of each and a preview", async () => {
    const { width, height } = await shownPicture();
    assert.deepEqual([width, height], [159, 284]);
    assert.deepEqual(await test.helperCalls("--preview"), [
      ["--preview", "--layout", "vtuber-bubble", "--style", "rune", "--font", "bebas", "--caption-position", "auto"],
    ]);
    for (const [name, current] of [
      ["seconds", "Last 90 s"],
      ["layout", "Bubble"],
      ["style", "Rune"],
      ["font", "Bebas Neue"],
      ["pos", "Auto"],
    ]) {
      assert.equal((await test.dock.widget({ name })).current, current);
    }
    assert.deepEqual(await readPreferences(), { seconds: 90, ...otherProgramsKeys });
  });

  it("are all saved when one changes, and foreign keys are kept", async () => {
    const before = await shownPicture();
    await test.dock.choose({ name: "style" }, "Bold Meme");
    await waitForPreview(before, 2, { layout: "vtuber-bubble", style: "meme", font: "bebas", position: "auto" });
    assert.deepEqual(await readPreferences(), {
      seconds: 90,
      layout: "vtuber-bubble",
      style: "meme",
      font: "bebas",
      caption_position: "auto",
      ...otherProgramsKeys,
    });
    await test.session.screenshot("1-style", await test.dock.area());
  });

  it("preview a layout and a caption position", async () => {
    const before = await shownPicture();
    await test.dock.choose({ name: "pos" }, "Top");
    await waitForPreview(before, 3, { layout: "vtuber-bubble", style: "meme", font: "bebas", position: "top" });

    const atTop = await shownPicture();
    await test.dock.choose({ name: "layout" }, "Podcast");
    await waitForPreview(atTop, 4, { layout: "podcast", style: "meme", font: "bebas", position: "top" });
    await test.session.screenshot("2-layout", await test.dock.area());
  });

  it("include no caption position without captions", async () => {
    const before = await shownPicture();
    await test.dock.choose({ name: "style" }, "None");
    await test.dock.waitForWidget({ name: "pos", enabled: false, toolTip: "No captions with style None" });
    assert.equal((await test.dock.widget({ name: "font" })).enabled, true);
    assert.equal((await readPreferences()).style, "none");
    await waitForPreview(before, 5, { layout: "podcast", style: "none", font: "bebas", position: "top" });
    await test.session.screenshot("3-none", await test.dock.area());

    const withoutCaptions = await shownPicture();
    await test.dock.choose({ name: "style" }, "Neon");
    await test.dock.waitForWidget({ name: "pos", enabled: true, toolTip: "Where captions sit on the Short" });
    await waitForPreview(withoutCaptions, 6, { layout: "podcast", style: "neon", font: "bebas", position: "top" });
  });

  it("are the same after a restart of OBS", async () => {
    const chosen = await shownPicture();
    assert.equal((await test.stopObs()).exitCode, 0);
    const written = await readPreferences();
    assert.deepEqual(written, {
      seconds: 90,
      layout: "podcast",
      style: "neon",
      font: "bebas",
      caption_position: "top",
      ...otherProgramsKeys,
    });

    await startObsAndOpenSection();
    assert.equal((await shownPicture()).hash, chosen.hash);
    await assertChosen();
    assert.deepEqual(await readPreferences(), written);
  });

  async function assertChosen() {
    for (const [name, current] of [
      ["seconds", "Last 90 s"],
      ["layout", "Podcast"],
      ["style", "Neon"],
      ["font", "Bebas Neue"],
      ["pos", "Top"],
    ]) {
      assert.equal((await test.dock.widget({ name })).current, current);
    }
  }

  it("stay when an account is linked and the helper sends its lists", async () => {
    await test.dock.click({ text: "Connect account" });
    await test.dock.waitForWidget({ class: "QLabel", text: "Connected as @sample" });
    await assertChosen();
  });

  it("let OBS exit cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
