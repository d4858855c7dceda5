// Processes as the system shows them.

import { readdir, readFile } from "node:fs/promises";
import { run } from "../../../tools/obs/command.mjs";

/** All processes: their ids, those of their parents, and their command lines. */
export async function processes() {
  const lines = (await run("ps", ["-e", "-ww", "-o", "pid=,ppid=,args="])).split("\n");
  return lines
    .map((line) => /^\s*(\d+)\s+(\d+)\s(.*)$/.exec(line))
    .filter(Boolean)
    .map(([, pid, parent, command]) => ({ pid: Number(pid), parent: Number(parent), command }));
}

/** The ids of all that the process has started, itself or by others; ended ones count until somebody asks for them. */
export async function descendants(pid) {
  const all = await processes();
  const found = [pid];
  for (const ancestor of found) {
    found.push(...all.filter(({ parent }) => parent === ancestor).map((child) => child.pid));
  }
  return found.slice(1);
}

/** Memory, open descriptors, threads and processor time of a process. */
export async function figuresOf(pid) {
  const status = await readFile(`/proc/${pid}/status`, "utf8");
  const times = (await readFile(`/proc/${pid}/stat`, "utf8")).split(") ").at(-1).split(" ");
  return {
    memory_KiB: Number(/^VmRSS:\s+(\d+)/m.exec(status)[1]),
    threads: Number(/^Threads:\s+(\d+)/m.exec(status)[1]),
    descriptors: (await readdir(`/proc/${pid}/fd`)).length,
    // The kernel counts in ticks of 10 ms.
    processor_s: (Number(times[11]) + Number(times[12])) / 100,
  };
}

/** Sends a signal; a process that has ended by now needs none. */
export function signal(pid, name) {
  try {
    process.kill(pid, name);
  } catch (error) {
    if (error.code !== "ESRCH") {
      throw error;
    }
  }
}
