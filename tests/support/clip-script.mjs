// docs/examples/clip.mjs, run as its reader runs it.

import { execFile } from "node:child_process";
import { copyFile, symlink } from "node:fs/promises";
import path from "node:path";

const checkout = path.resolve(import.meta.dirname, "..", "..");

/** Puts the script into `folder`; with obs-websocket-js beside it unless `installed` is false. Answers its path. */
export async function placeClipScript(folder, { installed = true } = {}) {
  const script = path.join(folder, "clip.mjs");
  await copyFile(path.join(checkout, "docs", "examples", "clip.mjs"), script);
  if (installed) {
    await symlink(path.join(checkout, "tools", "obs", "node_modules"), path.join(folder, "node_modules"));
  }
  return script;
}

/** Runs the script on the obs-websocket at `address`; answers `exitCode`, `output` and `errorOutput`. */
export function runClipScript(script, address, password) {
  const env = { ...process.env, OBS_ADDRESS: address, ...(password === undefined ? {} : { OBS_PASSWORD: password }) };
  return new Promise((resolve) => {
    execFile(process.execPath, [script], { env }, (failure, output, errorOutput) => {
      resolve({ exitCode: failure ? failure.code : 0, output, errorOutput });
    });
  });
}
