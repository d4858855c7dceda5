// A clip from the button to the Short, and its failures.

import { open } from "node:fs/promises";
import path from "node:path";
import { run } from "../../obs/command.mjs";
import { errorColour } from "../../obs/dock.mjs";
import { switchReplayBufferOn } from "../replay-buffer.mjs";

const replay = "Replay";

/** OBS saves into a pipe, and cannot finish until somebody reads it. */
export async function prepare(home, stage) {
  await switchReplayBufferOn(home, replay);
  await run("mkfifo", [pipe(stage)]);
}

function pipe(stage) {
  return path.join(stage.session.home.recordings, `${replay}.mkv`);
}

async function finishSaving(stage) {
  const replayFile = await open(pipe(stage));
  for await (const piece of replayFile.createReadStream()) {
    void piece;
  }
}

/** Clips again, lets the helper answer with `event`, and waits for the status text. */
async function clip(stage, event, text, colour) {
  await stage.answer("--process", event);
  await stage.dock.click({ name: "clipBtn" });
  await finishSaving(stage);
  await stage.dock.waitForStatus(text, colour);
}

export const shots = [
  {
    name: "no-clips-yet",
    async reach(stage) {
      await stage.settle();
      await stage.openOnly("recentSection");
      await stage.dock.waitForWidget({ class: "QListWidget", visible: true });
    },
  },
  {
    name: "saving",
    part: "header",
    async reach(stage) {
      await stage.openOnly();
      await stage.answer("--process", "hold", { event: "done", formatted: ["/s/triple-kill.mp4"], note: "uploading" });
      await stage.dock.click({ name: "clipBtn" });
      await stage.dock.waitForStatus("Saving the last 60 s…");
    },
  },
  {
    name: "not-saved",
    part: "header",
    reach: ({ dock }) => dock.waitForStatus(/^OBS didn't save the replay within 15 s\./, errorColour),
  },
  {
    name: "making",
    part: "header",
    async reach(stage) {
      await finishSaving(stage);
      await stage.dock.waitForStatus("Clip saved. Making your Short (about 1–3 min)…");
    },
  },
  {
    name: "done",
    part: "header",
    async reach(stage) {
      await stage.release("--process");
      await stage.dock.waitForStatus("Your Short is ready: triple-kill.mp4 (uploading)");
    },
  },
  {
    name: "offline",
    part: "header",
    reach: (stage) => clip(stage, { event: "pending" }, "Offline: clip kept and will upload automatically."),
  },
  {
    name: "kept-locally",
    part: "header",
    reach: (stage) =>
      clip(
        stage,
        { event: "error", error: "the upload was refused." },
        "Clip kept locally: the upload was refused.",
        errorColour,
      ),
  },
  {
    name: "replay-buffer-stopped",
    part: "header",
    async reach(stage) {
      await stage.call("StopReplayBuffer");
      await stage.dock.waitForStatus(/^Replay Buffer stopped\./, errorColour);
    },
  },
  {
    name: "replay-buffer-starting",
    part: "header",
    async reach(stage) {
      await stage.callModule("ClipThat");
      await stage.dock.waitForStatus("Starting the Replay Buffer… press Clip that again in a few seconds.");
    },
  },
];
