// Small helpers written on the spot, and tools/check-helper run on them.

import { execFile } from "node:child_process";
import { mkdtemp, rm, writeFile } from "node:fs/promises";
import os from "node:os";
import path from "node:path";

/** The folder of this repository. */
export const checkout = path.resolve(import.meta.dirname, "..", "..", "..");

/** A folder that is gone after the test `t`. */
export async function temporaryFolder(t) {
  const folder = await mkdtemp(path.join(os.tmpdir(), "kit-test-"));
  t.after(() => rm(folder, { recursive: true, force: true }));
  return folder;
}

/** Writes a helper into `folder` that runs these bash lines; answers its path. `$here` is the folder there. */
export async function writeHelper(folder, lines) {
  const file = path.join(folder, "helper");
  await writeFile(file, `#!/usr/bin/env bash\nhere='${folder}'\n${lines}\n`, { mode: 0o755 });
  return file;
}

/** Runs a program; answers its `exitCode`, its `output` and its `errorOutput`. */
export function runProgram(program, args, options = {}) {
  return new Promise((resolve) => {
    execFile(program, args, options, (failure, output, errorOutput) => {
      resolve({ exitCode: failure ? failure.code : 0, output, errorOutput });
    });
  });
}

/** Runs tools/check-helper; answers its `exitCode`, its report (`output`) and its complaints (`errorOutput`). */
export function checkHelper(args, env = {}) {
  return runProgram(path.join(checkout, "tools", "check-helper"), args, { env: { ...process.env, ...env } });
}

/** Checks a helper of these bash lines with one command alone. */
export async function checkLines(t, command, lines, options = []) {
  const helper = await writeHelper(await temporaryFolder(t), lines);
  return checkHelper([helper, "--only", command, ...options]);
}
