// starts.mjs [STARTS]: how long OBS takes to start the module, and others beside it. Prints JSON lines.

import { fakeHelper, TestSession } from "../obs/support/test-session.mjs";
import { handlerTimes, median, report } from "./figures.mjs";

const starts = Number(process.argv[2] ?? 15);
const modules = ["kestrune", "obs-websocket", "frontend-tools"];

/** Milliseconds that OBS's own profiler counts for the start of each module. */
function moduleStarts(log) {
  return modules.map((module) => {
    const line = new RegExp(`obs_init_module\\(${module}\\.so\\): ([0-9.]+)\\sms`).exec(log);
    return Number(line[1]);
  });
}

/** Starts and ends OBS so many times; `measure` is given OBS's log each time. */
async function startOften(name, turns, extraEnv, measure) {
  const test = await TestSession.create(name, { helper: fakeHelper("linked-helper"), extraEnv });
  try {
    for (let turn = 0; turn < turns; ++turn) {
      await test.startObs();
      await test.stopObs();
      await measure(test.session.obs.lines().join("\n"));
    }
  } finally {
    await test.close();
  }
}

const all = [];
await startOften("bench-start", starts, {}, (log) => all.push(moduleStarts(log)));
for (const [index, module] of modules.entries()) {
  const times = all.map((each) => each[index]);
  report(`start of ${module}`, { median_ms: median(times), highest_ms: Math.max(...times) });
}

// Besides, OBS runs what the module's start has queued: Qt polishes the dock's widgets.
const times = handlerTimes("bench-queued");
const isQueued = ({ event }) => event === "PolishRequest" || event === "Polish";
const queued = [];
await startOften("bench-queued", 5, times.env, async () => {
  const events = (await times.read()).filter((kind) => kind.inDock && isQueued(kind));
  queued.push(events.reduce((sum, { totalProcessor_ms }) => sum + totalProcessor_ms, 0));
});
report("queued by the start", { median_ms: median(queued) });
