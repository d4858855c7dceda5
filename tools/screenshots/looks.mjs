// Takes pictures of the dock in every theme, at every scale and in odd sizes, for a person to look at.

import { writeFile } from "node:fs/promises";
import path from "node:path";
import { formatIni } from "../obs/ini.mjs";
import { switchReplayBufferOn } from "./replay-buffer.mjs";
import { Stage } from "./stage.mjs";

const looks = path.resolve(import.meta.dirname, "..", "..", "build", "screenshots", "looks");
const scales = [1, 1.5, 2];
const narrow = { width: 200, height: 800 };
const tall = { width: 420, height: 1150 };
const sections = ["styleSection", "hotkeySection", "chatBox", "recentSection"];

/** OBS's themes. "System" takes the desktop's colours, here a high contrast. */
const themes = {
  dark: { id: "com.obsproject.Yami.Original" },
  light: { id: "com.obsproject.Yami.Light" },
  acri: { id: "com.obsproject.Yami.Acri" },
  "high-contrast": {
    id: "com.obsproject.System",
    colours: { back: "0,0,0", text: "255,255,255", chosen: "0,255,255" },
  },
};

/** Sets the desktop's colours for Qt, as KDE stores them. */
async function setDesktopColours(home, { back, text, chosen }) {
  const colours = (ground, letters) => ({
    BackgroundNormal: ground,
    BackgroundAlternate: ground,
    ForegroundNormal: letters,
  });
  const areas = ["Window", "Button", "View", "Tooltip"].map((name) => [`Colors:${name}`, colours(back, text)]);
  areas.push(["Colors:Selection", colours(chosen, back)]);
  await writeFile(path.join(home.folder, ".config", "kdeglobals"), formatIni(Object.fromEntries(areas)));
}

function subject({ id, colours }, scale) {
  return {
    scale,
    size: { width: 1280, height: 1200 },
    answers: { "--check-update": [{ event: "update", update: true, latest: "1.0.7", notes: "Fixes captions." }] },
    env: () => (colours ? { XDG_CURRENT_DESKTOP: "KDE", KDE_FULL_SESSION: "true", KDE_SESSION_VERSION: "6" } : {}),
    async prepare(home) {
      await switchReplayBufferOn(home);
      await home.changeUserSettings((settings) => {
        settings.Appearance = { Theme: id };
      });
      if (colours) {
        await setDesktopColours(home, colours);
      }
    },
  };
}

async function openAll(stage) {
  for (const section of sections) {
    await stage.toggle(`${section}Toggle`, true);
  }
}

export async function photographLooks() {
  for (const scale of scales) {
    for (const [theme, settings] of Object.entries(themes)) {
      const name = `${theme}-${scale * 100}`;
      await Stage.run(`looks-${name}`, subject(settings, scale), looks, async (stage) => {
        await stage.settle();
        await stage.dock.waitForWidget({ name: "updateBtn", visible: true });
        await stage.photograph({ name: `${name}-docked` });
        await stage.float(tall);
        await openAll(stage);
        await stage.photograph({ name: `${name}-tall`, area: { x: 0, y: 0, ...tall } });
        for (const section of sections) {
          await stage.openOnly(section);
          await stage.resizeFloating(narrow);
          await stage.photograph({ name: `${name}-200-px-${section}`, area: { x: 0, y: 0, ...narrow } });
          await stage.resizeFloating(tall);
        }
      });
    }
  }
}
