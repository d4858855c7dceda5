// The replay for the helper, and proof that it stays unchanged.

import { createHash } from "node:crypto";
import { copyFile, mkdir, readFile } from "node:fs/promises";
import path from "node:path";
import { makeTestVideo } from "../obs/media.mjs";
import { error } from "./findings.mjs";

/** There is no video to make Shorts of; the message says why. */
export class NoReplay extends Error {}

/** Copies `source`, or a test video, into `folder`; returns its path or throws NoReplay. */
export async function prepareReplay(folder, source) {
  // Replay names contain spaces, and people's names are not always ASCII.
  const home = path.join(folder, "Ana Peña");
  await mkdir(home);
  const replay = path.join(home, `Replay 2026-01-31 20-15-00${source ? path.extname(source) : ".mkv"}`);
  if (source) {
    await copyFile(source, replay);
  } else {
    await makeTestVideo(replay, { width: 640, height: 360, fps: 30, seconds: 4 }).catch(({ message }) => {
      const reason = /ENOENT/.test(message) ? "ffmpeg is not installed" : message;
      throw new NoReplay(`no test video could be made (${reason}); install ffmpeg or name a video with --replay FILE`);
    });
  }
  return replay;
}

async function fingerprint(file) {
  return createHash("sha256")
    .update(await readFile(file))
    .digest("hex");
}

/** Calls `work`; returns findings unless `file` is unchanged. */
export async function watchFile(file, work) {
  const before = await fingerprint(file);
  await work();
  try {
    return (await fingerprint(file)) === before ? [] : [error("the replay was changed; it belongs to the user")];
  } catch {
    return [error("the replay was removed or moved; it belongs to the user")];
  }
}
