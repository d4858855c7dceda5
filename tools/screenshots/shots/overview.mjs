// OBS with the dock, and the choices for a clip.

import { waitFor } from "../../obs/wait.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

const shorts = "/home/ana/Shorts";
const recent = ["boss-fight.mp4", "triple-kill.mp4", "what-was-that.mp4"];

export const answers = {
  "--recent": [{ event: "recent", folder: shorts, items: recent.map((name) => ({ name, path: `${shorts}/${name}` })) }],
};

export const stream = true;

export const prepare = (home) => switchReplayBufferOn(home);

export const shots = [
  {
    name: "dock",
    // Without the status bar: its figures depend on the machine.
    area: { x: 0, y: 0, width: 1280, height: 828 },
    async reach(stage) {
      await stage.settle();
      await stage.openOnly("styleSection");
    },
  },
  { name: "ready", reach: (stage) => stage.openOnly() },
  { name: "layout-and-captions", reach: (stage) => stage.openOnly("styleSection") },
  {
    name: "style-none",
    async reach({ dock }) {
      const preview = async () => (await dock.widget({ name: "preview" })).picture.hash;
      const before = await preview();
      await dock.choose({ name: "style" }, "None");
      await dock.waitForWidget({ name: "pos", enabled: false });
      await waitFor("the preview without captions", async () => (await preview()) !== before);
    },
  },
  { name: "recent-clips", reach: (stage) => stage.openOnly("recentSection") },
];
