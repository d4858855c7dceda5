// An update from offer to restart, and one that fails.

import { writeFile } from "node:fs/promises";
import path from "node:path";
import { errorColour } from "../../obs/dock.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

// The fake helper is the installer, too: this is its argument.
const installer = "--installer";
const downloaded = { event: "downloaded", latest: "1.0.7", path: installer };

export const answers = {
  "--check-update": [{ event: "update", update: true, latest: "1.0.7", notes: "Fixes captions." }],
  "--download-update": [{ event: "progress", phase: "download", percent: 42 }, "hold", downloaded],
  [installer]: ["hold", "exit 1"],
};

export const env = (folder) => ({
  KESTRUNE_MANIFEST: path.join(folder, "manifest.json"),
  KESTRUNE_UPDATE_RUNNER: path.join(folder, "helper"),
});

export const prepare = (home) => switchReplayBufferOn(home);

export const shots = [
  {
    name: "update-available",
    part: "header",
    async reach(stage) {
      await stage.settle();
      await stage.dock.waitForWidget({ name: "updateBtn", visible: true });
    },
  },
  {
    name: "update-downloading",
    part: "header",
    async reach({ dock }) {
      await dock.click({ name: "updateBtn" });
      await dock.waitForStatus("Downloading v1.0.7… 42%");
    },
  },
  {
    name: "update-installing",
    part: "header",
    async reach(stage) {
      await stage.release("--download-update");
      await stage.dock.waitForStatus("Installing v1.0.7… (approve the Windows prompt)");
    },
  },
  {
    name: "update-error",
    part: "header",
    async reach(stage) {
      // So wide that the button shows its whole text.
      await stage.float({ width: 690, height: 500 });
      await stage.release(installer);
      await stage.dock.waitForStatus(/^Update failed: the installer exited with code 1\./, errorColour);
    },
  },
  {
    name: "update-done",
    part: "header",
    async reach(stage) {
      await stage.resizeFloating({ width: 360, height: 500 });
      await stage.answer(installer, "exit 0");
      await writeFile(stage.file("manifest.json"), '{"version":"1.0.7"}');
      await stage.dock.click({ name: "updateBtn" });
      await stage.dock.waitForStatus("Update installed (v1.0.7). Restart OBS to finish.");
    },
  },
];
