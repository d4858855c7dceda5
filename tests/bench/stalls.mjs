// stalls.mjs [SECONDS]: how long single events hold OBS's user-interface thread while the module has as much to do as
// it can get, and whether OBS skips frames over it. The OBS without the module that it is compared with has the same
// helpers run beside it: they take processors away from OBS, and what counts here is the module. Prints JSON lines.

import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { standInHelper, TestSession } from "../obs/support/test-session.mjs";
import { figures, handlerTimes, report } from "./figures.mjs";

const busy_s = Number(process.argv[2] ?? 120);
const round_ms = 12_000;
const layouts = ["Podcast", "Facecam", "Bubble"];

/** Clicks, saves and choices as of a very busy streamer. Answers with what the helper was called with meanwhile. */
async function round(test, turn) {
  const earlier = (await test.helperCalls()).length;
  const end = sleep(round_ms);
  await test.websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType: "ClipThat" });
  await test.dock.click({ name: "updateBtn", enabled: true });
  await test.dock.choose({ name: "layout" }, layouts[turn % layouts.length]);
  await end;
  return (await test.helperCalls()).slice(earlier);
}

/** What is left of such a round without the module. */
async function roundWithoutModule(test, helperCalls) {
  await test.websocket.call("SaveReplayBuffer");
  const runs = helperCalls.map((args) => test.runHelper(...args));
  await Promise.all([...runs, sleep(round_ms)]);
}

/** Answers with the helper calls of each round; these are given for a run without the module. */
async function measure(name, callsOfRounds) {
  const withModule = !callsOfRounds;
  const times = handlerTimes("bench-stalls");
  const test = await TestSession.create("bench-stalls", {
    helper: standInHelper("busy-helper"),
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
    const end = Date.now() + busy_s * 1000;
    const calls = [];
    for (let turn = 0; Date.now() < end; ++turn) {
      if (withModule) {
        calls.push(await round(test, turn));
      } else {
        await roundWithoutModule(test, callsOfRounds[turn % callsOfRounds.length]);
      }
    }
    const after = await figures(test);
    await test.stopObs();
    report(name, {
      renderedFrames: after.renderedFrames - before.renderedFrames,
      skippedFrames: after.skippedFrames - before.skippedFrames,
    });
    reportLongest(name, await times.read());
    return calls;
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

const callsOfRounds = await measure("stalls with the module");
await measure("stalls without the module", callsOfRounds);
