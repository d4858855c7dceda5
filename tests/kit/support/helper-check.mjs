// Small helpers written on the spot, and tools/check-helper run on them.

import { execFile } from "node:child_process";
import { mkdtemp, rm, writeFile } from "node:fs/promises";
import os from "node:os";
import path from "node:path";

const checkout = path.resolve(import.meta.dirname, "..", "..", "..");

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

/** Runs tools/check-helper; answers its `exitCode`, its report (`output`) and its complaints (`errorOutput`). */
export function checkHelper(args, env = {}) {
  const program = path.join(checkout, "tools", "check-helper");
  return new Promise((resolve) => {
    execFile(program, args, { env: { ...process.env, ...env } }, (failure, output, errorOutput) => {
      resolve({ exitCode: failure ? failure.code : 0, output, errorOutput });
    });
  });
}

/** Checks a helper of these bash lines with one command alone. */
export async function checkLines(t, command, lines, options = []) {
  const helper = await writeHelper(await temporaryFolder(t), lines);
  return checkHelper([helper, "--only", command, ...options]);
}
