// holds.mjs [SECONDS]: how long single events hold OBS's user-interface thread while the module is as busy as it gets,
// in processor time, which other programs cannot lengthen. Prints rows.

import { readFile } from "node:fs/promises";
import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { artefactsFolder, fakeHelper, TestSession } from "../obs/support/test-session.mjs";
import { number, row } from "./row.mjs";
import { builtFolder } from "./session.mjs";

const busy_s = Number(process.argv[2] ?? 36);
const round_ms = 12_000;
const layouts = ["Podcast", "Facecam", "Bubble"];
const timesFile = path.join(artefactsFolder("bench-holds"), "handler-times");

/** Clicks, saves and chooses like a very busy streamer. */
async function useModule(test) {
  const end = Date.now() + busy_s * 1000;
  for (let turn = 0; Date.now() < end; ++turn) {
    const roundEnd = sleep(round_ms);
    await test.websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType: "ClipThat" });
    await test.dock.click({ name: "updateBtn", enabled: true });
    await test.dock.choose({ name: "layout" }, layouts[turn % layouts.length]);
    await roundEnd;
  }
}

/** Runs a busy OBS, and returns the times of all kinds of events. */
async function measure() {
  const test = await TestSession.create("bench-holds", {
    helper: fakeHelper("busy-helper"),
    extraEnv: {
      LD_PRELOAD: path.join(builtFolder, "libhandler_times.so"),
      HANDLER_TIMES_FILE: timesFile,
    },
  });
  try {
    const picture = path.join(test.session.folder, "preview.png");
    // As large as the dock takes: of noise, 8 bits a colour.
    await run("convert", ["-size", "1080x1920", "plasma:fractal", "-depth", "8", picture]);
    await test.switchReplayBufferOn();
    await test.startObs();
    await test.waitForReadiness();
    for (const section of ["styleSection", "recentSection"]) {
      await test.dock.openSection(section);
    }
    await waitFor("the offer of an update", () => test.dock.widget({ name: "updateBtn", visible: true }));
    await useModule(test);
    if (!(await test.dock.widget({ name: "preview" })).visible) {
      throw new Error("the dock shows no preview");
    }
    await test.stopObs();
    return (await readFile(timesFile, "utf8")).trim().split("\n").map(JSON.parse);
  } finally {
    await test.close();
  }
}

/** Of events of these kinds, the one that held the thread longest. */
function longest(kinds) {
  const [{ receiver, event, maxProcessor_ms }] = kinds.toSorted((a, b) => b.maxProcessor_ms - a.maxProcessor_ms);
  return `${number(maxProcessor_ms)} ms (${[event, receiver.trim()].filter((text) => text && text !== "None").join(", ")})`;
}

const kinds = await measure();
const call = (name) => kinds.filter(({ receiver }) => receiver === name);
const bufferStarts = call("obs_frontend_replay_buffer_start");
const previews = call("QImageReader::read");
const inDock = kinds.filter((kind) => kind.inDock);
const ofObs = kinds.filter((kind) => !kind.inDock && ![...bufferStarts, ...previews].includes(kind));
const what = "longest hold of the user interface";
row(what, longest(inDock), `OBS itself ${longest(ofObs)}`, "16.7 ms");
row(
  `${what}, decoding a preview of noise`,
  longest(previews),
  `OBS starting its Replay Buffer ${longest(bufferStarts)}`,
);
