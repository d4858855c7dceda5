// OBS with the dock, and the choices for a clip.

import { waitFor } from "../../obs/wait.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

const shorts = "/home/ana/Shorts";
const recent = ["boss-fight.mp4", "triple-kill.mp4", "what-was-that.mp4"];

export const answers = {
  "--recent": [{ event: "recent", folder: shorts, items: recent.map((name) => ({ name, path: `${shorts}/${name}` })) }],
};

export const prepare = (home) => switchReplayBufferOn(home);

/** Stops the moving picture, always at the same frame. */
async function freezePicture(stage) {
  const input = { inputName: "Test picture" };
  await stage.call("TriggerMediaInputAction", { ...input, mediaAction: "OBS_WEBSOCKET_MEDIA_INPUT_ACTION_PAUSE" });
  await stage.call("SetMediaInputCursor", { ...input, mediaCursor: 4000 });
}

export const shots = [
  {
    name: "dock",
    area: { x: 0, y: 0, width: 1280, height: 860 },
    async reach(stage) {
      await stage.settle();
      await freezePicture(stage);
      await stage.openOnly("styleSection");
    },
  },
  {
    name: "docks-menu",
    area: { x: 0, y: 0, width: 290, height: 320 },
    async reach({ input }) {
      await input.focusWindow("^OBS ");
      await input.tap("alt", "d");
      await input.tap("up"); // from the first entry to the last
    },
  },
  {
    name: "ready",
    async reach(stage) {
      await stage.input.tap("escape");
      await stage.openOnly();
    },
  },
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
