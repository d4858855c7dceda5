// Answers for the fake helper.

import { mkdir, rename, rm, writeFile } from "node:fs/promises";
import path from "node:path";

/** A linked account, reported once released; no clips and no update. */
const usual = {
  "--status": ["hold", { event: "status", linked: true, login: "ana" }],
  "--chat-get": [{ event: "chat", enabled: false, command: "!rune", cooldown_s: 30, per_stream_cap: 10 }],
  "--recent": [{ event: "recent", folder: "/home/ana/Shorts", items: [] }],
  "--check-update": [{ event: "update", update: false }],
};

/** Sets the lines that future runs of a command answer: events, and the fake helper's words "hold" and "exit N". */
export async function answer(folder, command, ...lines) {
  const text = lines.map((line) => (typeof line === "string" ? line : JSON.stringify(line))).join("\n");
  const file = path.join(folder, command);
  await rm(`${file}.go`, { force: true });
  await writeFile(`${file}.new`, `${text}\n`);
  await rename(`${file}.new`, file);
}

/** Releases the runs of a command from "hold". */
export async function release(folder, command) {
  await writeFile(path.join(folder, `${command}.go`), "");
}

/** Makes the folder with the usual answers, overridden by `others`. */
export async function prepareAnswers(folder, others) {
  await mkdir(folder);
  for (const [command, lines] of Object.entries({ ...usual, ...others })) {
    await answer(folder, command, ...lines);
  }
}
