// What the benchmarks in the real OBS share: figures of its process, and their form.

import { readFile } from "node:fs/promises";

/** Prints one line for table.mjs. */
export function report(name, values) {
  console.log(JSON.stringify({ name, ...values }));
}

export function median(values) {
  return values.toSorted((a, b) => a - b)[Math.floor(values.length / 2)];
}

/** What the OBS of a test session has used and rendered so far. */
export async function figures(test) {
  const { pid } = test.session.obs;
  const mainThread = (await readFile(`/proc/${pid}/task/${pid}/stat`, "utf8")).split(") ")[1].split(" ");
  const switches = await readFile(`/proc/${pid}/task/${pid}/status`, "utf8");
  const memory = await readFile(`/proc/${pid}/smaps_rollup`, "utf8");
  const stats = await test.websocket.call("GetStats");
  return {
    // The kernel counts in ticks of 10 ms.
    userInterface_ms: 10 * (Number(mainThread[11]) + Number(mainThread[12])),
    wakeUps: Number(/^voluntary_ctxt_switches:\s+(\d+)/m.exec(switches)[1]),
    memory_KiB: Number(/^Private_Dirty:\s+(\d+)/m.exec(memory)[1]),
    renderedFrames: stats.renderTotalFrames,
    skippedFrames: stats.renderSkippedFrames + stats.outputSkippedFrames,
  };
}
