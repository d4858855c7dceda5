// What the fake helper answers.

import { mkdir, rename, rm, writeFile } from "node:fs/promises";
import path from "node:path";

/** A helper with a linked account, which it tells when it is released, no clips and no news. */
const usual = {
  "--status": ["hold", { event: "status", linked: true, login: "ana" }],
  "--chat-get": [{ event: "chat", enabled: false, command: "!rune", cooldown_s: 30, per_stream_cap: 10 }],
  "--recent": [{ event: "recent", folder: "/home/ana/Shorts", items: [] }],
  "--check-update": [{ event: "update", update: false }],
};

/**
 * Has the runs of a command answer with these lines from now on: events, and the strings that fake-helper knows.
 * Runs in flight keep what they have begun to read.
 */
export async function answer(folder, command, ...lines) {
  const text = lines.map((line) => (typeof line === "string" ? line : JSON.stringify(line))).join("\n");
  const file = path.join(folder, command);
  await rm(`${file}.go`, { force: true });
  await writeFile(`${file}.new`, `${text}\n`);
  await rename(`${file}.new`, file);
}

/** Lets the runs of this command go on that hold. */
export async function release(folder, command) {
  await writeFile(path.join(folder, `${command}.go`), "");
}

/** Makes the folder, with the usual answers and, before them, `others` by command. */
export async function prepareAnswers(folder, others) {
  await mkdir(folder);
  for (const [command, lines] of Object.entries({ ...usual, ...others })) {
    await answer(folder, command, ...lines);
  }
}
