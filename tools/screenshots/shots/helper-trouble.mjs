import { chmod, rm } from "node:fs/promises";
import { errorColour } from "../../obs/dock.mjs";

export const answers = { "--status": ["exit 3"] };

export const shots = [
  {
    name: "helper-stopped",
    part: "header",
    async reach(stage) {
      await stage.dock.waitForStatus(/^The Kestrune helper stopped unexpectedly \(code 3\)\./, errorColour);
      // The first runs must not change the next picture.
      await stage.waitForPreview();
      await stage.waitForIdleHelper();
    },
  },
  {
    name: "helper-cannot-start",
    part: "header",
    async reach(stage) {
      await chmod(stage.file("helper"), 0o644);
      await stage.openOnly("chatBox");
      await stage.dock.click({ text: "Save chat settings" });
      await stage.dock.waitForStatus(/^Couldn't start the Kestrune helper/, errorColour);
      await stage.openOnly();
    },
  },
  {
    name: "helper-missing",
    part: "header",
    async reach(stage) {
      await rm(stage.file("helper"));
      await stage.dock.click({ text: "Connect account" });
      await stage.dock.waitForStatus(/^Kestrune helper missing\./, errorColour);
    },
  },
];
