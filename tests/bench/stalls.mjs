// stalls.mjs [SECONDS]: how long single events hold OBS's user-interface thread while the module has as much to do as
// it can get, and whether OBS skips frames over it. Helpers take processors away from OBS, so OBS without the module
// has the same ones run beside it at the same times; the clicks and the questions of what the dock shows remain in the
// run with the module alone. Prints JSON lines.

import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { fakeHelper, TestSession } from "../obs/support/test-session.mjs";
import { figures, handlerTimes, report } from "./figures.mjs";

const busy_s = Number(process.argv[2] ?? 120);
const round_ms = 12_000;
const layouts = ["Podcast", "Facecam", "Bubble"];

/** Clicks, saves and choices as of a very busy streamer. Answers with the helper runs of that time. */
async function useModule(test) {
  const start = Date.now();
  for (let turn = 0; Date.now() < start + busy_s * 1000; ++turn) {
    const end = sleep(round_ms);
    await test.websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType: "ClipThat" });
    await test.dock.click({ name: "updateBtn", enabled: true });
    await test.dock.choose({ name: "layout" }, layouts[turn % layouts.length]);
    await end;
  }
  const lines = (await test.notes("timed-helper-calls")).map((line) => line.split("\t"));
  const runs = lines.map(([time_us, ...args]) => ({ after_ms: time_us / 1000 - start, args }));
  return { runs: runs.filter(({ after_ms }) => after_ms >= 0), length_ms: Date.now() - start };
}

/** Until a time that may have passed. */
async function sleepUntil(time_ms) {
  await sleep(Math.max(0, time_ms - Date.now()));
}

/** What is left of that without the module. */
async function doWithoutModule(test, { runs, length_ms }) {
  const start = Date.now();
  const ends = [];
  for (const { after_ms, args } of runs) {
    await sleepUntil(start + after_ms);
    if (args[0] === "--process") {
      await test.websocket.call("SaveReplayBuffer");
    }
    ends.push(test.runHelper(...args));
  }
  await Promise.all([...ends, sleepUntil(start + length_ms)]);
}

/** Measures with the module and answers with the helper runs, or without it beside those of an earlier answer. */
async function measure(name, earlier) {
  const withModule = !earlier;
  const times = handlerTimes("bench-stalls");
  const test = await TestSession.create("bench-stalls", {
    helper: fakeHelper("busy-helper"),
    withModule,
    extraEnv: times.env,
  });
  try {
    await run("convert", ["-size", "1080x1920", "plasma:fractal", path.join(test.session.folder, "preview.png")]);
    await test.switchReplayBufferOn();
    await test.startObs();
    if (withModule) {
      await test.waitForReadiness();
      for (const section of ["styleSection", "recentSection"]) {
        await test.dock.openSection(section);
      }
      await waitFor("the offer of an update", () => test.dock.widget({ name: "updateBtn", visible: true }));
    } else {
      await test.websocket.call("StartReplayBuffer");
      await sleep(10_000);
    }
    const before = await figures(test);
    const use = withModule ? await useModule(test) : await doWithoutModule(test, earlier);
    const after = await figures(test);
    await test.stopObs();
    report(name, {
      renderedFrames: after.renderedFrames - before.renderedFrames,
      skippedFrames: after.skippedFrames - before.skippedFrames,
    });
    const kinds = await times.read();
    reportLongest(name, kinds);
    if (withModule) {
      // A part of no event's time, though the module asks for it: OBS alone decides how it starts.
      const start = kinds.find(({ receiver }) => receiver === "obs_frontend_replay_buffer_start");
      report(`${name}, OBS starting its Replay Buffer`, start);
    }
    return use;
  } finally {
    await test.close();
  }
}

/** The kinds of event that held the thread longest: of the dock, and of OBS with whatever it calls in modules. */
function reportLongest(name, kinds) {
  for (const inDock of [true, false]) {
    const longest = kinds
      .filter((kind) => kind.inDock === inDock)
      .toSorted((a, b) => b.longestProcessor_ms - a.longestProcessor_ms)
      .slice(0, 12);
    report(`${name}, ${inDock ? "dock" : "OBS"}`, { longest });
  }
}

const use = await measure("stalls with the module");
await measure("stalls without the module", use);
