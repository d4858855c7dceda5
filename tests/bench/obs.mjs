// What the module costs the real OBS: at its start, and while nothing happens. Prints JSON lines.

import { readFile } from "node:fs/promises";
import { sleep } from "../../tools/obs/wait.mjs";
import { standInHelper, TestSession } from "../obs/support/test-session.mjs";

const starts = Number(process.argv[2] ?? 15);
const idle_s = Number(process.argv[3] ?? 120);

function median(values) {
  return values.toSorted((a, b) => a - b)[Math.floor(values.length / 2)];
}

function report(name, values) {
  console.log(JSON.stringify({ name, ...values }));
}

/** Milliseconds that OBS's own profiler counts for the start of each module. */
function moduleStarts(log) {
  const modules = ["kestrune", "obs-websocket", "frontend-tools"];
  return Object.fromEntries(
    modules.map((module) => {
      const line = new RegExp(`obs_init_module\\(${module}\\.so\\): ([0-9.]+)\\sms`).exec(log);
      return [module, line && Number(line[1])];
    }),
  );
}

async function measureStarts() {
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
  for (const module of Object.keys(all[0])) {
    const times = all.map((each) => each[module]);
    report(`start of ${module}`, { median_ms: median(times), highest_ms: Math.max(...times) });
  }
}

/** What the process has used so far. */
async function figures(test) {
  const pid = test.session.obs.pid;
  const status = await readFile(`/proc/${pid}/status`, "utf8");
  const mainThread = (await readFile(`/proc/${pid}/task/${pid}/stat`, "utf8")).split(") ")[1].split(" ");
  const threadStatus = await readFile(`/proc/${pid}/task/${pid}/status`, "utf8");
  const stats = await test.websocket.call("GetStats");
  return {
    // In clock ticks of 10 ms.
    userInterface_ms: 10 * (Number(mainThread[11]) + Number(mainThread[12])),
    wakeUps: Number(/^voluntary_ctxt_switches:\s+(\d+)/m.exec(threadStatus)[1]),
    memory_KiB: Number(/^VmRSS:\s+(\d+)/m.exec(status)[1]),
    rendered: stats.renderTotalFrames,
    skipped: stats.renderSkippedFrames + stats.outputSkippedFrames,
  };
}

async function measureIdle(withModule) {
  const test = await TestSession.create(`bench-idle-${withModule}`, {
    helper: standInHelper("linked-helper"),
    withModule,
  });
  try {
    await test.switchReplayBufferOn();
    await test.startObs();
    if (!withModule) {
      // As the module does: its memory and its work are OBS's.
      await test.websocket.call("StartReplayBuffer");
    }
    // Everything that belongs to the start, the update check included, is over.
    await sleep(15_000);
    const before = await figures(test);
    await sleep(idle_s * 1000);
    const after = await figures(test);
    report(withModule ? "idle with the module" : "idle without the module", {
      userInterfaceCpu_percent: (after.userInterface_ms - before.userInterface_ms) / (10 * idle_s),
      userInterfaceWakeUps_per_s: (after.wakeUps - before.wakeUps) / idle_s,
      memory_MiB: after.memory_KiB / 1024,
      memoryAdded_KiB: after.memory_KiB - before.memory_KiB,
      renderedFrames: after.rendered - before.rendered,
      skippedFrames: after.skipped - before.skipped,
    });
    await test.stopObs();
  } finally {
    await test.close();
  }
}

await measureStarts();
for (const withModule of [false, true]) {
  await measureIdle(withModule);
}
