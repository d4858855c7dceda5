// screenshots.mjs [SUBJECT...]: takes the user guide's pictures in the real OBS; by default all. KESTRUNE_BUILD_DIR
// names the build folder.

import path from "node:path";
import { photographLooks } from "./looks.mjs";
import * as chat from "./shots/chat.mjs";
import * as clips from "./shots/clips.mjs";
import * as connecting from "./shots/connecting.mjs";
import * as helperTrouble from "./shots/helper-trouble.mjs";
import * as hotkey from "./shots/hotkey.mjs";
import * as overview from "./shots/overview.mjs";
import * as updates from "./shots/updates.mjs";
import { Stage } from "./stage.mjs";

const images = path.resolve(import.meta.dirname, "..", "..", "docs", "images");

/**
 * Each is one run of OBS; a shot's `reach` brings the dock into its state. The picture shows the dock, its `part`
 * "header", or an `area` of the screen.
 */
const subjects = { connecting, overview, hotkey, chat, clips, updates, "helper-trouble": helperTrouble };

async function photograph(name) {
  const subject = subjects[name];
  await Stage.run(name, subject, images, async (stage) => {
    for (const shot of subject.shots) {
      await shot.reach(stage);
      await stage.photograph(shot);
    }
  });
}

const known = [...Object.keys(subjects), "looks"];
const wanted = process.argv.slice(2);
const unknown = wanted.find((name) => !known.includes(name));
if (unknown) {
  console.error(`screenshots: unknown subject "${unknown}"; subjects are: ${known.join(", ")}`);
  process.exit(2);
}
for (const name of wanted.length > 0 ? wanted : known) {
  await (name === "looks" ? photographLooks() : photograph(name));
}
