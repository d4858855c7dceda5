// What a helper or an imported scene collection may say to freeze OBS: OBS keeps responding, and its window stays as it
// is.

import assert from "node:assert/strict";
import { mkdir, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { run } from "../../tools/obs/command.mjs";
import { errorColour } from "../../tools/obs/dock.mjs";
import { waitFor } from "../../tools/obs/wait.mjs";
import { clipHotkey, fakeHelper, TestSession } from "./support/test-session.mjs";

describe("OBS under hostile input", () => {
  let test;
  let pipe;
  let width;

  const answer = (command, event) =>
    writeFile(path.join(test.session.folder, "answers", command), `${JSON.stringify(event)}\n`);

  const windowWidth = async () => {
    const geometry = await run("xdotool", ["search", "--name", "^OBS ", "getwindowgeometry", "--shell"], {
      env: { ...process.env, DISPLAY: test.session.display },
    });
    return Number(/^WIDTH=(\d+)$/m.exec(geometry)[1]);
  };

  before(async () => {
    test = await TestSession.create("hostile-input", { helper: fakeHelper("scripted-helper") });
    await mkdir(path.join(test.session.folder, "answers"));
    // Whoever reads from it waits for ever.
    pipe = path.join(test.session.folder, "pipe");
    await run("mkfifo", [pipe]);
    await answer("--status", { event: "status", linked: false });
    await answer("--preview", { event: "preview", path: pipe });
    await test.session.home.changeSceneCollection((collection) => {
      delete collection.modules.kestrune_hotkey;
      const [picture, scene] = collection.sources;
      // Not the pipe: OBS reads the markup in its own list of sources.
      picture.name = '<img src="nowhere.png">';
      scene.settings.items[0].name = picture.name;
      scene.hotkeys = { "libobs.show_scene_item.1": [clipHotkey.record] };
    });
    await test.startObs();
    await test.waitForStatusQueries();
    // The question after each link attempt stays unanswered, so that the attempt's text stays.
    await rm(path.join(test.session.folder, "answers", "--status"));
    width = await windowWidth();
  });
  after(() => test?.close());

  it("shows texts with markup as they are written", async () => {
    const texts = [
      `x <img src="${pipe}">`,
      `x <img src="file://${pipe}">`,
      "<table><tr><td>".repeat(20),
      "<table><tr><td colspan=1000000000>x",
      `${"<b>".repeat(1200)}x <a href="x">`,
    ];
    for (const text of texts) {
      await answer("--link", { event: "error", error: text });
      await test.dock.click({ text: "Connect account", enabled: true });
      await test.dock.waitForStatus(text, errorColour);
    }
    await test.session.screenshot("markup");
  });

  it("stays as wide as it is under a long word", async () => {
    await answer("--link", { event: "error", error: "W".repeat(3000) });
    await test.dock.click({ text: "Connect account", enabled: true });
    await test.dock.waitForStatus(/^W+$/, errorColour);
    assert.equal(await windowWidth(), width);
    await test.session.screenshot("long-word");
  });

  it("shows no preview that it would wait for", async () => {
    await test.dock.openSection("styleSection");
    const drawing = path.join(test.session.folder, "drawing.svg");
    const uses = Array.from({ length: 9 }, (_, n) => `<g id="g${n + 1}">${`<use href="#g${n}"/>`.repeat(10)}</g>`);
    await writeFile(
      drawing,
      `<svg xmlns="http://www.w3.org/2000/svg"><defs><rect id="g0" width="9" height="9"/>` +
        `${uses.join("")}</defs><use href="#g9"/></svg>`,
    );
    const large = path.join(test.session.folder, "large.png");
    await run("convert", ["-size", "8000x8000", "xc:red", large]);
    const layouts = ["Podcast", "Facecam", "Bubble"];
    for (const picture of [drawing, large, "//192.0.2.1/share/picture.png"]) {
      await answer("--preview", { event: "preview", path: picture });
      const before = (await test.helperCalls("--preview")).length;
      await test.dock.choose({ name: "layout" }, layouts.pop());
      await waitFor("the preview", async () => (await test.helperCalls("--preview")).length > before);
      await test.waitForIdleHelper();
      assert.equal((await test.dock.widget({ name: "preview" })).visible, false);
    }
  });

  it("shows names of hotkeys as they are written", async () => {
    await test.dock.openSection("hotkeySection");
    const offer = await test.dock.waitForWidget({ text: "Use Ctrl+Shift+C (in use!)", visible: true });
    assert.match(offer.toolTip, /&lt;img src=/);
    await test.dock.click({ text: "Use Ctrl+Shift+C (in use!)" });
    await test.dock.waitForStatus(/^Hotkey set: .*<img src=/, errorColour);
    assert.equal(await windowWidth(), width);
  });

  it("takes a scene collection with thousands of bindings", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
    await test.session.home.changeSceneCollection(({ modules }) => {
      modules.kestrune_hotkey = Array.from({ length: 5000 }, () => clipHotkey.record);
    });
    await test.startObs();
    await test.dock.openSection("hotkeySection");
    await test.dock.waitForWidget({ name: "hotkeyLabel", text: /^Hotkey: Ctrl\+Shift\+C, Ctrl/, visible: true });
    const button = await test.dock.waitForWidget({ text: "Change", visible: true });
    const area = await test.dock.area();
    assert.ok(button.x + button.width <= area.x + area.width, "the button is within the dock");
    assert.equal(await windowWidth(), width);
    await test.session.screenshot("bindings");
  });

  it("lets OBS end cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
