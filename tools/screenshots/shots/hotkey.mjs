import { errorColour } from "../../obs/dock.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

export const prepare = (home) => switchReplayBufferOn(home);

async function startCapture({ dock }, buttonText) {
  await dock.click({ text: buttonText });
  await dock.waitForWidget({ text: "Press keys… (Esc cancels)" });
}

/** Opens OBS's settings at the hotkeys, and there only Kestrune's. */
async function openHotkeySettings({ input }) {
  await input.focusWindow("^OBS ");
  await input.tap("alt", "f");
  await input.tap("s");
  await input.focusWindow("^Settings$");
  await input.tap("h"); // the list's entry that begins so
  await input.tap("tab");
  await input.type("kestrune");
}

export const shots = [
  {
    name: "hotkey-capture",
    async reach(stage) {
      await stage.settle();
      await stage.openOnly("hotkeySection");
      await stage.floatForHotkeys();
      await startCapture(stage, "Set hotkey");
    },
  },
  {
    name: "hotkey-set",
    async reach(stage) {
      await stage.input.tap("control", "shift", "f8");
      await stage.dock.waitForStatus("Hotkey set: Ctrl+Shift+F8 (also in Settings → Hotkeys).");
    },
  },
  {
    name: "hotkey-bad-key",
    async reach(stage) {
      await startCapture(stage, "Change");
      await stage.input.tap("calculator");
      await stage.dock.waitForStatus(/^That key can't be used/, errorColour);
    },
  },
  { name: "settings-hotkeys", window: "^Settings$", height: 330, reach: openHotkeySettings },
];
