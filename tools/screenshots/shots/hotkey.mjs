import { errorColour } from "../../obs/dock.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

const controlShiftC = { shift: true, control: true, alt: false, command: false, key: "OBS_KEY_C" };

/** The default combination conflicts with starting a recording. */
export async function prepare(home) {
  await switchReplayBufferOn(home);
  await home.changeProfile((profile) => {
    profile.Hotkeys = { "OBSBasic.StartRecording": JSON.stringify({ bindings: [controlShiftC] }) };
  });
}

async function startCapture({ dock }, buttonText) {
  await dock.click({ text: buttonText });
  await dock.waitForWidget({ text: "Press keys… (Esc cancels)" });
}

export const shots = [
  {
    name: "hotkey-conflict-offer",
    async reach(stage) {
      await stage.settle();
      await stage.openOnly("hotkeySection");
      // A narrow dock has no room for the row's three texts.
      await stage.float({ width: 510, height: 700 });
      await stage.focusFloatingDock();
      await stage.dock.waitForWidget({ text: "Use Ctrl+Shift+C (in use!)", visible: true });
    },
  },
  { name: "hotkey-capture", reach: (stage) => startCapture(stage, "Set hotkey") },
  {
    name: "hotkey-bad-key",
    async reach({ dock, input }) {
      await input.tap("calculator");
      await dock.waitForWidget({ name: "status", text: /^That key can't be used/ });
    },
  },
  {
    name: "hotkey-set",
    async reach(stage) {
      await startCapture(stage, "Set hotkey");
      await stage.input.tap("control", "shift", "f8");
      await stage.dock.waitForStatus("Hotkey set: Ctrl+Shift+F8 (also in Settings → Hotkeys).");
    },
  },
  {
    name: "hotkey-conflict",
    async reach(stage) {
      await startCapture(stage, "Change");
      await stage.input.tap("control", "shift", "c");
      await stage.dock.waitForWidget({ name: "status", text: /both will fire/, styleSheet: errorColour });
    },
  },
];
