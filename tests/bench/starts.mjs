// starts.mjs [STARTS]: how long OBS takes to start the module, and others beside it. Prints JSON lines.

import { standInHelper, TestSession } from "../obs/support/test-session.mjs";
import { median, report } from "./figures.mjs";

const starts = Number(process.argv[2] ?? 15);
const modules = ["kestrune", "obs-websocket", "frontend-tools"];

/** Milliseconds that OBS's own profiler counts for the start of each module. */
function moduleStarts(log) {
  return modules.map((module) => {
    const line = new RegExp(`obs_init_module\\(${module}\\.so\\): ([0-9.]+)\\sms`).exec(log);
    return Number(line[1]);
  });
}

const test = await TestSession.create("bench-start", { helper: standInHelper("linked-helper") });
const all = [];
try {
  for (let start = 0; start < starts; ++start) {
    await test.startObs();
    await test.stopObs();
    all.push(moduleStarts(test.session.obs.lines().join("\n")));
  }
} finally {
  await test.close();
}
for (const [index, module] of modules.entries()) {
  const times = all.map((each) => each[index]);
  report(`start of ${module}`, { median_ms: median(times), highest_ms: Math.max(...times) });
}
