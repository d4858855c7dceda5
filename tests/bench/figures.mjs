// Figures of the OBS process, for the benchmarks in the real OBS.

import { readFile } from "node:fs/promises";
import path from "node:path";
import { artefactsFolder } from "../obs/support/test-session.mjs";

/** Prints one line for table.mjs. */
export function report(name, values) {
  console.log(JSON.stringify({ name, ...values }));
}

export function median(values) {
  return values.toSorted((a, b) => a - b)[Math.floor(values.length / 2)];
}

/** What the session's OBS has used and rendered so far. */
export async function figures(test) {
  const { pid } = test.session.obs;
  const mainThread = (await readFile(`/proc/${pid}/task/${pid}/stat`, "utf8")).split(") ")[1].split(" ");
  const switches = await readFile(`/proc/${pid}/task/${pid}/status`, "utf8");
  const memory = await readFile(`/proc/${pid}/smaps_rollup`, "utf8");
  const stats = await test.websocket.call("GetStats");
  return {
    // The kernel counts ticks of 10 ms.
    userInterface_ms: 10 * (Number(mainThread[11]) + Number(mainThread[12])),
    wakeUps: Number(/^voluntary_ctxt_switches:\s+(\d+)/m.exec(switches)[1]),
    memory_KiB: Number(/^Private_Dirty:\s+(\d+)/m.exec(memory)[1]),
    renderedFrames: stats.renderTotalFrames,
    skippedFrames: stats.renderSkippedFrames + stats.outputSkippedFrames,
  };
}

/**
 * Records how long each kind of event blocks OBS's user-interface thread, from `delay_ms` after its start. `env` is for
 * the session; `read` returns the records once OBS has ended.
 */
export function handlerTimes(session, delay_ms = 0) {
  const file = path.join(artefactsFolder(session), "handler-times");
  return {
    env: {
      LD_PRELOAD: path.join(process.env.KESTRUNE_BUILD_DIR, "tests", "bench", "libhandler_times.so"),
      HANDLER_TIMES_FILE: file,
      HANDLER_TIMES_DELAY_MS: String(delay_ms),
    },
    read: async () =>
      (await readFile(file, "utf8"))
        .trim()
        .split("\n")
        .map((line) => JSON.parse(line)),
  };
}
