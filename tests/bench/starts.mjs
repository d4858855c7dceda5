// starts.mjs [STARTS]: what this module adds to OBS's start, in processor time of OBS's user-interface thread from its
// first moment until it is idle again, beside obs-websocket and beside the least dock that has as many boxes. Prints
// rows.

import { readFile } from "node:fs/promises";
import path from "node:path";
import { sleep } from "../../tools/obs/wait.mjs";
import { median, number, row, spread } from "./row.mjs";
import { builtFolder, createSession, kestrune } from "./session.mjs";

const starts = Number(process.argv[2] ?? 5);
// The module's timers ask the helper for the last time 2.5 s after the dock was built, apart from the update check.
const settled_ms = 4000;
const idle_ms = 2000;
const idle_share = 0.05;

const configurations = {
  without: { modules: [] },
  kestrune: { modules: [kestrune] },
  websocket: { modules: [], websocket: true },
  bareDock: { modules: [path.join(builtFolder, "bare_dock")] },
};

/** How long the user-interface thread has run so far. */
async function processorTime_ms(pid) {
  const [ran_ns] = (await readFile(`/proc/${pid}/task/${pid}/schedstat`, "utf8")).split(" ");
  return Number(ran_ns) / 1e6;
}

/** Starts OBS, waits until it is idle, and ends it; returns the processor time until then. */
async function startOnce(session) {
  // In every configuration OBS starts the Replay Buffer, as the module would have it do.
  await session.startObs(["--startreplaybuffer"]);
  const { pid } = session.obs;
  await sleep(settled_ms);
  let before;
  let after = await processorTime_ms(pid);
  do {
    before = after;
    await sleep(idle_ms);
    after = await processorTime_ms(pid);
  } while (after - before > idle_share * idle_ms);
  await session.obs.stop();
  return after;
}

const sessions = {};
const times = {};
try {
  for (const [name, configuration] of Object.entries(configurations)) {
    sessions[name] = await createSession(`start-${name}`, configuration);
    times[name] = [];
    // The first start fills caches.
    await startOnce(sessions[name]);
  }
  for (let turn = 0; turn < starts; ++turn) {
    for (const [name, session] of Object.entries(sessions)) {
      times[name].push(await startOnce(session));
    }
  }
} finally {
  await Promise.all(Object.values(sessions).map((session) => session.close()));
}

const added = (name) => times[name].map((time, turn) => time - times.without[turn]);
const ratio = number(median(added("kestrune")) / median(added("bareDock")), 2);
row(
  `start-up, ${starts} starts each: processor time of the user interface, more than without`,
  spread(added("kestrune"), "ms"),
  `obs-websocket ${spread(added("websocket"), "ms")}; a dock with five boxes ${spread(added("bareDock"), "ms")}; ` +
    `OBS without ${spread(times.without, "ms", 0)}`,
  `at most obs-websocket's, else 1.1 times the five boxes' (here ${ratio})`,
);
