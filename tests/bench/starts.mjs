// starts.mjs [STARTS]: how long this module and others take to load. Prints JSON lines.

import { fakeHelper, TestSession } from "../obs/support/test-session.mjs";
import { handlerTimes, median, report } from "./figures.mjs";

const starts = Number(process.argv[2] ?? 15);
const modules = ["kestrune", "obs-websocket", "frontend-tools"];

/** Milliseconds per module start, from OBS's profiler. */
function moduleStarts(log) {
  return modules.map((module) => {
    const line = new RegExp(`obs_init_module\\(${module}\\.so\\): ([0-9.]+)\\sms`).exec(log);
    return Number(line[1]);
  });
}

/** Starts and ends OBS `turns` times and calls `measure` with each log. */
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

// OBS also runs what the module has queued at load: Qt polishes the dock's widgets.
const times = handlerTimes("bench-queued");
const isQueued = ({ event }) => event === "PolishRequest" || event === "Polish";
const queued = [];
await startOften("bench-queued", 5, times.env, async () => {
  const events = (await times.read()).filter((kind) => kind.inDock && isQueued(kind));
  queued.push(events.reduce((sum, { totalProcessor_ms }) => sum + totalProcessor_ms, 0));
});
report("queued by the start", { median_ms: median(queued) });
