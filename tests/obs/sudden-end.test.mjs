// OBS is killed again and again while the dock saves its preferences: nothing may be lost.

import assert from "node:assert/strict";
import { watch } from "node:fs";
import { readdir, readFile } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { clipHotkey, fakeHelper, TestSession } from "./support/test-session.mjs";

const minKills = 15;
// On a busy machine fewer kills hit the middle of a save.
const maxKills = 60;
const maxDelay_ms = 10;
const lengths = [30, 60, 90, 120];
// Large, so that most of a save is writing, and kills hit it.
const otherProgramsKeys = { written_by_another_program: { text: "kept ".repeat(400_000), list: [1, "two", null] } };

describe("the preferences file of an OBS that is killed while it saves", () => {
  let test;
  let folder;

  before(async () => {
    test = await TestSession.create("sudden-end", { helper: fakeHelper("linked-helper") });
    folder = path.dirname(test.session.home.preferencesFile);
    await test.session.home.changePreferences((preferences) => {
      Object.assign(preferences, otherProgramsKeys, { hotkey: [clipHotkey.record], hotkey_offered: true });
    });
    await test.switchReplayBufferOn();
  });
  after(() => test?.close());

  /** Changes the clip length with the arrow keys until OBS is gone: each press is saved. */
  async function chooseUntilKilled() {
    while (test.session.obs.running) {
      await test.session.input.tap("up");
      await test.session.input.tap("down");
    }
  }

  async function killDuringSaves() {
    let saving = false;
    const watcher = watch(folder, (_, name) => (saving ||= name === "settings.json.tmp"));
    const choosing = chooseUntilKilled();
    try {
      await waitFor("a save", () => saving, { every_ms: 1 });
      await sleep(Math.random() * maxDelay_ms);
    } finally {
      watcher.close();
      await test.session.obs.kill();
      await choosing;
    }
  }

  /** What the next OBS reads: the file or else its backup. */
  async function readable() {
    for (const name of ["settings.json", "settings.json.bak"]) {
      try {
        return JSON.parse(await readFile(path.join(folder, name), "utf8"));
      } catch {
        // Try the backup.
      }
    }
    return undefined;
  }

  it(`is readable, itself or its backup, with all it held, after each of ${minKills} kills or more`, async (context) => {
    let duringSave = 0;
    let kill = 0;
    while (kill < minKills || (duringSave === 0 && kill < maxKills)) {
      ++kill;
      await test.startObs();
      await test.dock.waitForWidget({ name: "clipBtn", enabled: true });
      await test.session.input.focusWindow("^OBS ");
      await test.dock.choose({ name: "seconds" }, "Last 60 s");
      await killDuringSaves();

      const files = await readdir(folder);
      duringSave += files.includes("settings.json.tmp") || !files.includes("settings.json") ? 1 : 0;
      const preferences = await readable();
      assert.ok(preferences, `neither file is readable after kill ${kill}: ${files}`);
      const { seconds, hotkey, hotkey_offered, written_by_another_program } = preferences;
      assert.ok(lengths.includes(seconds), `seconds is ${seconds}`);
      assert.deepEqual({ hotkey, hotkey_offered }, { hotkey: [clipHotkey.record], hotkey_offered: true });
      assert.deepEqual({ written_by_another_program }, otherProgramsKeys);
    }
    context.diagnostic(`${duringSave} of ${kill} kills came in the middle of a save`);
    assert.ok(duringSave > 0, "no kill came in the middle of a save: nothing is proved");
  });

  it("is what the next OBS shows", async () => {
    const { seconds } = await readable();
    await test.startObs();
    await waitFor("the clip length", async () => (await test.dock.widget({ name: "seconds" })).current);
    assert.equal((await test.dock.widget({ name: "seconds" })).current, `Last ${seconds} s`);
    await test.dock.waitForWidget({ name: "hotkeyLabel", text: "Hotkey: Ctrl+Shift+C" });
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
