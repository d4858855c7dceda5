// stalls.mjs [SECONDS]: how long single events block OBS's user-interface thread while the module is as busy as it
// gets, and whether OBS skips frames. The helpers take CPU time from OBS, so the run without the module starts the same
// ones at the same times; only clicks and dock queries are missing there. Prints JSON lines.

import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { fakeHelper, TestSession } from "../obs/support/test-session.mjs";
import { figures, handlerTimes, report } from "./figures.mjs";

const busy_s = Number(process.argv[2] ?? 120);
const round_ms = 12_000;
const layouts = ["Podcast", "Facecam", "Bubble"];

/** Clicks, saves and chooses like a very busy streamer. Returns the helper runs meanwhile. */
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

async function sleepUntil(time_ms) {
  await sleep(Math.max(0, time_ms - Date.now()));
}

/** The same load without the module. */
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

/** Measures with the module and returns the helper runs; or, given `earlier` runs, without the module beside those. */
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
      // Not part of any event's time: the module only asks, and OBS decides how it starts.
      const start = kinds.find(({ receiver }) => receiver === "obs_frontend_replay_buffer_start");
      report(`${name}, OBS starting its Replay Buffer`, start);
    }
    return use;
  } finally {
    await test.close();
  }
}

/**
 * The events that blocked the thread longest: those of the dock, and those of OBS including the modules that it calls.
 */
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
