// day.mjs FOLDER DISKS [HOURS]: a day on air, in the real OBS: ./run soak day. A second OBS without the module streams
// beside it, so that what OBS does by itself can be told apart. FOLDER takes the figures; DISKS has two small file
// systems of their own, `replays` and `shorts`, which are filled now and then.

import assert from "node:assert/strict";
import { rm } from "node:fs/promises";
import path from "node:path";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { assertShort } from "../obs/support/shorts.mjs";
import { wayNames } from "./day/clip.mjs";
import { processes } from "./day/processes.mjs";
import { growth, leaks, printReport, writeTable } from "./day/report.mjs";
import { Station } from "./day/station.mjs";
import { suspended, troubles } from "./day/troubles.mjs";

const [, , folder, disksFolder, hours = "8"] = process.argv;
const length_s = Number(hours) * 3600;
const clipSeconds = 30;
// Every few minutes, and often enough that a short day has something of everything, too.
const turnEvery_s = Math.min(180, length_s / 30);
const suspend_s = Math.min(600, length_s / 6);
// The Replay Buffer needs some frames.
const shortestPause_ms = 4000;

assert.ok(length_s > 0, `${hours} is no number of hours`);

const disks = { replays: path.join(disksFolder, "replays"), shorts: path.join(disksFolder, "shorts") };
const start = performance.now();
const elapsed_s = () => Math.round((performance.now() - start) / 1000);
const clips = [];
const samples = [];
const faults = [];

function log(text) {
  console.log(`${new Date().toISOString().slice(11, 19)} ${text}`);
}

function fault(text) {
  faults.push(text);
  log(`FAULT: ${text}`);
}

async function startStation(name, options) {
  const station = await Station.create(name, options);
  if (options.withModule) {
    await station.test.runSampleHelper("--link");
    const settings = { enabled: true, cooldown_s: 0, per_stream_cap: 0 };
    await station.test.runSampleHelper("--chat-set", JSON.stringify(settings));
    await waitFor("the consent", async () => (await station.test.runSampleHelper("--chat-get"))[0].granted);
  }
  await station.test.startObs();
  await (options.withModule ? station.test.waitForReadiness() : station.startReplayBuffer());
  await station.goOnAir();
  return station;
}

/** Figures of both while no helper runs. */
async function sample(day) {
  await Promise.all([day.station.waitForIdleChildren(), day.control.waitForIdleChildren()]);
  const [station, control] = await Promise.all([day.station.figures(), day.control.figures()]);
  samples.push({ seconds: elapsed_s(), station, control });
  await writeTable(folder, samples);
}

/** Looks whether there is what the status line said, and makes room for the next. */
async function checkOutcome({ station, control }, { made, text }) {
  await station.waitForIdleChildren();
  const shorts = await station.test.finishedShorts();
  try {
    assert.equal(shorts.length, made ? 1 : 0, `the line reads "${text}", and there are ${shorts.length} Shorts`);
    if (made) {
      await assertShort(shorts[0], (await station.savedReplays()).at(-1), clipSeconds);
    }
  } finally {
    await Promise.all([...shorts.map((short) => rm(short)), station.removeReplays(), control.removeReplays()]);
  }
}

/** OBS stops its Replay Buffer when it cannot write a replay, and shows a message box. */
async function tidyUp(station) {
  await station.closeMessages();
  await station.startReplayBuffer();
}

/** One clip, with or without trouble. What goes wrong is noted, and the day goes on. */
async function turn(day, trouble, way) {
  const clip = { trouble: trouble.name, way, made: false, told: false };
  clips.push(clip);
  try {
    await Promise.all([tidyUp(day.station), tidyUp(day.control)]);
    const outcome = await trouble(day, way);
    Object.assign(clip, outcome, { told: !outcome.made });
    await checkOutcome(day, outcome);
  } catch (error) {
    fault(`clip ${clips.length} (${trouble.name}, ${way}): ${error.message}`);
  }
  log(`clip ${clips.length}, ${trouble.name}, ${way}: ${JSON.stringify(clip.texts)}`);
  await sample(day);
}

async function suspension(day) {
  const before = samples.at(-1);
  log(`suspending everything for ${Math.round(suspend_s)} s`);
  await turn(day, suspended, wayNames[0]);
  const after = samples.at(-1);
  return { station: growth(before.station, after.station), control: growth(before.control, after.control) };
}

async function wholeDay(day) {
  let ofSuspension;
  await sample(day);
  const begin_s = elapsed_s();
  for (let count = 0; count < troubles.length || elapsed_s() < length_s; ++count) {
    const next = sleep(Math.max(shortestPause_ms, 1000 * (begin_s + (count + 1) * turnEvery_s - elapsed_s())));
    await turn(day, troubles[count % troubles.length], wayNames[count % wayNames.length]);
    await next;
    if (!ofSuspension && count >= 2 && elapsed_s() > length_s / 2) {
      ofSuspension = await suspension(day);
    }
  }
  return ofSuspension;
}

/** Both have to end as if nothing had been, and nothing of theirs may be left. */
async function endDay({ station, control }) {
  // OBS 32.2 crashes when it ends with a message box open, with the module and without.
  await Promise.all([station.closeMessages(), control.closeMessages()]);
  const [end, ownEnd] = [await station.goOffAir(), await control.goOffAir()];
  log(`the ends of OBS: with the module ${JSON.stringify(end)}, without ${JSON.stringify(ownEnd)}`);
  assert.equal(end.exitCode, 0, "exit code of OBS with the module");
  assert.equal(end.memoryLeaks, ownEnd.memoryLeaks, "memory leaks that OBS counts");
  const places = [station.test.session.folder, disks.replays, disks.shorts];
  const left = async () =>
    (await processes()).filter(({ pid, command }) => pid !== process.pid && places.some((p) => command.includes(p)));
  await waitFor("all that the helper started to end", async () => (await left()).length === 0, {
    limit_ms: 60_000,
    explain: async () => JSON.stringify(await left()),
  });
}

const stations = [];
let ofSuspension;
try {
  stations.push(await startStation("soak-day", { withModule: true, disks }));
  stations.push(await startStation("soak-day-without", { withModule: false, disks }));
  const [station, control] = stations;
  const day = { station, control, disks, suspend_s };
  log("on air");
  ofSuspension = await Promise.race([wholeDay(day), station.whileRunning(), control.whileRunning()]);
  await endDay(day);
} catch (error) {
  fault(error.stack);
} finally {
  await Promise.all(stations.map((station) => station.close()));
}

if (samples.length > 0) {
  leaks(samples).forEach((name) => fault(`${name} grow`));
  const told = clips.filter((clip) => clip.made || clip.told).length;
  if (told !== clips.length) {
    fault(`${clips.length} clips asked for, but only ${told} made or told`);
  }
  const sinks = Object.fromEntries(["station", "control"].map((who, i) => [who, stations[i].sink.streams]));
  printReport({ samples, clips, suspension: ofSuspension, sinks, faults });
}
process.exit(faults.length > 0 ? 1 : 0);
