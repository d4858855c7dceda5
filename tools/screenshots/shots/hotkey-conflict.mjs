// The suggested combination starts a recording, too.

import { errorColour } from "../../obs/dock.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

const controlShiftC = { shift: true, control: true, alt: false, command: false, key: "OBS_KEY_C" };
const offer = { text: "Use Ctrl+Shift+C (in use!)" };

export async function prepare(home) {
  await switchReplayBufferOn(home);
  await home.changeProfile((profile) => {
    profile.Hotkeys = { "OBSBasic.StartRecording": JSON.stringify({ bindings: [controlShiftC] }) };
  });
}

export const shots = [
  {
    name: "hotkey-conflict-offer",
    tooltipOf: offer,
    async reach(stage) {
      await stage.settle();
      await stage.openOnly("hotkeySection");
      await stage.floatForHotkeys();
      await stage.dock.waitForWidget({ ...offer, visible: true });
    },
  },
  {
    name: "hotkey-conflict",
    async reach({ dock }) {
      await dock.click(offer);
      await dock.waitForStatus(/both will fire/, errorColour);
    },
  },
];
