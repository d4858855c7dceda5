// screenshots.mjs [SUBJECT...]: takes the user guide's pictures in the real OBS, and of Shorts; by default all.
// KESTRUNE_BUILD_DIR names the build folder.

import path from "node:path";
import { photographLooks } from "./looks.mjs";
import { photographShorts } from "./shorts.mjs";
import * as chat from "./shots/chat.mjs";
import * as clips from "./shots/clips.mjs";
import * as connecting from "./shots/connecting.mjs";
import * as firstStart from "./shots/first-start.mjs";
import * as helperTrouble from "./shots/helper-trouble.mjs";
import * as hotkeyConflict from "./shots/hotkey-conflict.mjs";
import * as hotkey from "./shots/hotkey.mjs";
import * as overview from "./shots/overview.mjs";
import * as updates from "./shots/updates.mjs";
import * as websocket from "./shots/websocket.mjs";
import { Stage } from "./stage.mjs";

const images = path.resolve(import.meta.dirname, "..", "..", "docs", "images");

/**
 * Each is one run of OBS; a shot's `reach` brings the dock into its state. The picture shows the dock, its `part`
 * "header", an `area` of the screen, or the `window` with such a title; with `height`, only so many pixels of it from the
 * top. With `tooltipOf` the mouse points at this widget.
 */
const subjects = {
  "first-start": firstStart,
  connecting,
  overview,
  hotkey,
  "hotkey-conflict": hotkeyConflict,
  chat,
  clips,
  updates,
  "helper-trouble": helperTrouble,
  websocket,
};

async function photograph(name) {
  const subject = subjects[name];
  await Stage.run(name, subject, images, async (stage) => {
    for (const shot of subject.shots) {
      await shot.reach(stage);
      await stage.photograph(shot);
    }
  });
}

const others = { shorts: () => photographShorts(images), looks: photographLooks };
const known = [...Object.keys(subjects), ...Object.keys(others)];
const wanted = process.argv.slice(2);
const unknown = wanted.find((name) => !known.includes(name));
if (unknown) {
  console.error(`screenshots: unknown subject "${unknown}"; subjects are: ${known.join(", ")}`);
  process.exit(2);
}
for (const name of wanted.length > 0 ? wanted : known) {
  await (others[name]?.() ?? photograph(name));
}
