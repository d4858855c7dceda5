// What goes wrong on a day on air. Each function asks for one clip and answers as `clip`; what concerns OBS alone also
// happens to the OBS without the module.

import { open, rm, statfs } from "node:fs/promises";
import path from "node:path";
import { readyStatus } from "../../../tools/obs/dock.mjs";
import { sleep } from "../../../tools/obs/wait.mjs";
import { clip, waitForHelperRun } from "./clip.mjs";
import { signal } from "./processes.mjs";
import { collections, suspend } from "./station.mjs";

const maxDisk_bytes = 1024 ** 3;
const limit_ms = 120_000;

/** Has a clip made while `folder`, a small file system of its own, has no room left. */
async function clipWithFullDisk(day, way, folder) {
  const { blocks, bsize } = await statfs(folder);
  if (blocks * bsize > maxDisk_bytes) {
    throw new Error(`${folder} is no small disk`);
  }
  const ballast = path.join(folder, "ballast");
  try {
    await fill(ballast);
    return await clip(day, way);
  } finally {
    await rm(ballast);
  }
}

async function fill(path) {
  const file = await open(path, "w");
  const zeros = Buffer.alloc(65_536);
  try {
    for (;;) {
      await file.write(zeros);
    }
  } catch (error) {
    if (error.code !== "ENOSPC") {
      throw error;
    }
  } finally {
    await file.close();
  }
}

/** Nothing but the clip. */
function nothing(day, way) {
  return clip(day, way);
}

/** The button is off while the Replay Buffer is; the other ways only have it started, and say so. */
async function replayBufferStopped(day, way) {
  const { station, control } = day;
  await Promise.all([station.stopReplayBuffer(), control.stopReplayBuffer()]);
  await control.startReplayBuffer();
  if (way === "button") {
    await station.startReplayBuffer();
    await station.test.dock.waitForStatus(readyStatus, undefined, limit_ms);
  }
  const outcome = await clip(day, way);
  // The module looks once more 1.5 s after it has started the Replay Buffer.
  await sleep(3000);
  return outcome;
}

function helperKilled(day, way) {
  const during = async (isOver) => {
    const run = await waitForHelperRun(day.station.test, isOver);
    if (run) {
      signal(run.pid, "SIGKILL");
    }
  };
  return clip(day, way, { during });
}

function diskOfShortsFull(day, way) {
  return clipWithFullDisk(day, way, day.disks.shorts);
}

function diskOfReplaysFull(day, way) {
  return clipWithFullDisk(day, way, day.disks.replays);
}

async function otherSceneCollection(day, way) {
  const use = (name) => Promise.all([day.station, day.control].map((each) => each.useCollection(name)));
  await use(collections[1]);
  // Pictures of the other scene, so that the Short has some.
  await sleep(4000);
  const outcome = await clip(day, way);
  await use(collections[0]);
  return outcome;
}

/** The troubles in turn; each has another way of asking next time, because there are four of those. */
export const troubles = [
  nothing,
  replayBufferStopped,
  otherSceneCollection,
  helperKilled,
  diskOfShortsFull,
  nothing,
  diskOfReplaysFull,
];

/** Everything is suspended while a Short is in the making. */
export function suspended(day, way) {
  const { station, control, suspend_s } = day;
  const during = async (isOver) => {
    await waitForHelperRun(station.test, isOver);
    await suspend([station, control], suspend_s);
  };
  return clip(day, way, { during, limit_ms: 300_000 + suspend_s * 1000 });
}
