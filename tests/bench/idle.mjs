// idle.mjs [SECONDS]: what an idle OBS uses without the module, and with its dock hidden and shown. Prints JSON lines.

import { sleep } from "../../tools/obs/wait.mjs";
import { fakeHelper, TestSession } from "../obs/support/test-session.mjs";
import { figures, handlerTimes, report } from "./figures.mjs";

const idle_s = Number(process.argv[2] ?? 120);
// By then the start is over, including the update check.
const startedAfter_ms = 15_000;

async function measure(name, { withModule = true, dockShown = true }) {
  const times = handlerTimes("bench-idle", startedAfter_ms);
  const test = await TestSession.create("bench-idle", {
    helper: fakeHelper("linked-helper"),
    withModule,
    extraEnv: times.env,
  });
  try {
    await test.switchReplayBufferOn();
    if (!dockShown) {
      await test.session.home.forgetDockState();
    }
    await test.startObs();
    if (!withModule) {
      // As the module does, because the Replay Buffer's cost is OBS's.
      await test.websocket.call("StartReplayBuffer");
    }
    await sleep(startedAfter_ms);
    const before = await figures(test);
    await sleep(idle_s * 1000);
    const after = await figures(test);
    await test.stopObs();
    const ofDock = (await times.read()).filter(({ inDock }) => inDock);
    report(name, {
      dockCpu_percent: ofDock.reduce((sum, { totalProcessor_ms }) => sum + totalProcessor_ms, 0) / (10 * idle_s),
      dockWakeUps_per_s: ofDock.reduce((sum, { count }) => sum + count, 0) / idle_s,
      userInterfaceCpu_percent: (after.userInterface_ms - before.userInterface_ms) / (10 * idle_s),
      userInterfaceWakeUps_per_s: (after.wakeUps - before.wakeUps) / idle_s,
      memory_MiB: before.memory_KiB / 1024,
      grown_MiB: (after.memory_KiB - before.memory_KiB) / 1024,
      renderedFrames: after.renderedFrames - before.renderedFrames,
      skippedFrames: after.skippedFrames - before.skippedFrames,
    });
  } finally {
    await test.close();
  }
}

await measure("idle without the module", { withModule: false });
await measure("idle, dock hidden", { dockShown: false });
await measure("idle, dock shown", {});
