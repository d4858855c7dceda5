// presses.mjs [PRESSES]: how long a real key press takes to reach the Replay Buffer of a real OBS: Kestrune's hotkey
// beside OBS's own "Save Replay", in turns. Prints rows.

import { spawn } from "node:child_process";
import { access, readFile } from "node:fs/promises";
import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { number, percentile, row } from "./row.mjs";
import { builtFolder, createSession, kestrune } from "./session.mjs";

const presses = Number(process.argv[2] ?? 50);
// X key codes; xdotool would take other texts for names.
const hotkeys = { kestrune: "074", obs: "075" };
// OBS looks at the keyboard every 25 ms, on a busy machine less often.
const hold_s = 0.2;
const saveReplay = JSON.stringify({ "ReplayBuffer.Save": [{ key: "OBS_KEY_F9" }] });

const states = {
  "dock hidden": { hidden: true },
  "dock shown": {},
  "dock shown, flooded by a helper": { recent: "flood" },
  "dock shown, lists of 1,000 clips arriving": { recent: "long" },
};

/** Waits until the start is over: the Replay Buffer runs, and the helper has been asked for the list of clips. */
async function waitForReadiness(session) {
  await session.obs.waitForLine(/==== Replay Buffer Start/);
  const calls = path.join(session.folder, "helper-calls");
  await waitFor("the list of clips to be asked for", async () => /--recent/.test(await readFile(calls, "utf8")));
  await sleep(3000);
}

/** Opens a window that has the keyboard, as a game does: then OBS has to look for the keys itself. Returns its end. */
async function openOtherWindow(session) {
  const env = { ...process.env, DISPLAY: session.display };
  const program = spawn("display", ["-title", "Other window", "xc:gray[64x64]"], { env, stdio: "ignore" });
  await session.input.focusWindow("^Other window$");
  return () => program.kill();
}

/** Presses each hotkey in turn; pauses are of different lengths, or the presses might march in step with OBS. */
async function pressAll(session, env) {
  for (let done = 0; done < presses; done += 10) {
    const actions = Array.from({ length: 10 }, () => Object.values(hotkeys)).flat();
    const args = actions.flatMap((key) => {
      const pause_s = (0.08 + 0.05 * Math.random()).toFixed(4);
      return ["keydown", "--delay", "0", key, "sleep", String(hold_s), "keyup", "--delay", "0", key, "sleep", pause_s];
    });
    await run("xdotool", args, { env: { ...process.env, ...env, DISPLAY: session.display } });
  }
}

/** Milliseconds from each press to the save that it led to, by hotkey. Presses that OBS has missed are left out. */
async function latencies(file) {
  const lines = (await readFile(file, "utf8")).trim().split("\n");
  const events = lines.map((line) => line.split(" ")).map(([what, time_ns]) => ({ what, time_ms: time_ns / 1e6 }));
  const found = { kestrune: [], obs: [] };
  let count = 0;
  for (const [index, { what, time_ms }] of events.entries()) {
    if (what === "press") {
      const next = events[index + 1];
      if (next?.what === "save") {
        found[count % 2 === 0 ? "kestrune" : "obs"].push(next.time_ms - time_ms);
      }
      count += 1;
    }
  }
  return found;
}

async function measure(state, { hidden = false, recent = "" }) {
  const file = path.resolve("build", "bench", "presses", "times");
  const env = { LD_PRELOAD: path.join(builtFolder, "libpress_times.so"), PRESS_TIMES_FILE: file };
  const session = await createSession("presses", {
    modules: [kestrune],
    env: { ...env, KESTRUNE_BENCH_RECENT: recent },
  });
  try {
    await access(env.LD_PRELOAD);
    await session.home.changeProfile((profile) => (profile.Hotkeys = { ReplayBuffer: saveReplay }));
    if (hidden) {
      await session.home.forgetDockState();
    }
    await session.startObs();
    await waitForReadiness(session);
    const closeOtherWindow = await openOtherWindow(session);
    await pressAll(session, env);
    await sleep(500);
    closeOtherWindow();
    const { kestrune: ours, obs: theirs } = await latencies(file);
    const told = (times) =>
      `${number(percentile(times, 0.5))} and ${number(percentile(times, 0.99))} ms` +
      (times.length < presses ? ` (${presses - times.length} missed)` : "");
    const later_ms = percentile(ours, 0.99) - percentile(theirs, 0.99);
    row(
      `key press to save, ${state}: median and 99th percentile of ${presses}`,
      told(ours),
      `OBS's own "Save Replay" ${told(theirs)}`,
      `5 ms later at the 99th percentile (here ${number(later_ms)})`,
    );
    await session.obs.stop();
  } finally {
    await session.close();
  }
}

for (const [state, conditions] of Object.entries(states)) {
  await measure(state, conditions);
}
