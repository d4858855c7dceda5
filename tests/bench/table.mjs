// table.mjs FOLDER: what ./run bench has measured, as one table in Markdown.

import { readFile } from "node:fs/promises";
import path from "node:path";

const folder = process.argv[2];
const read = (name) => readFile(path.join(folder, name), "utf8");
const jsonLines = async (name) =>
  (await read(name)).split("\n").filter((line) => line.startsWith("{")).map((line) => JSON.parse(line));
const byName = (lines) => Object.fromEntries(lines.map(({ name, ...values }) => [name, values]));

const stream = byName(JSON.parse(await read("event-stream.json")).benchmarks);
const press = byName(await jsonLines("press-to-save.log"));
const obs = byName(await jsonLines("obs.log"));

const rows = [];
const row = (what, measured, beside, ratio) => rows.push(`| ${what} | ${measured} | ${beside} | ${ratio} |`);
const number = (value, digits = 2) => value.toFixed(digits);

const start = (module) => obs[`start of ${module}`].median_ms;
for (const peer of ["obs-websocket", "frontend-tools"]) {
  row("start-up, median", `${number(start("kestrune"))} ms`, `${peer} ${number(start(peer))} ms`,
    number(start("kestrune") / start(peer)));
}

for (const [what, limit] of [
  ["key press to save", "a queued call"],
  ["key press to save, during a flood", "a queued call"],
  ["saved replay to first instruction", "posix_spawn to first instruction"],
]) {
  for (const [kind, member] of [["median", "median_us"], ["99th percentile", "p99_us"]]) {
    row(`${what}, ${kind}`, `${number(press[what][member], 0)} µs`, `${limit} ${number(press[limit][member], 0)} µs`,
      number(press[what][member] / press[limit][member]));
  }
}

const speed = (name) => stream[name].bytes_per_second / 1e6;
for (const chunk of [1, 4096, 65536]) {
  row(`events, ${chunk} bytes a read`, `${number(speed(`events/${chunk}`), 0)} MB/s`,
    `bare parse ${number(speed("bareParse"), 0)} MB/s`, number(speed(`events/${chunk}`) / speed("bareParse")));
}
const time = (size, chunk) => stream[`hugeLine/${size}/${chunk}`].real_time;
for (const [size, smaller, chunks] of [[10, 1, [1, 4096, 65536]], [1000, 100, [4096, 65536]]]) {
  for (const chunk of chunks) {
    row(`a line of ${size} MiB, ${chunk} bytes a read`, `${number(time(size, chunk), 1)} ms`,
      `${smaller} MiB ${number(time(smaller, chunk), 1)} ms`, number(time(size, chunk) / time(smaller, chunk)));
  }
}

const idle = obs["idle with the module"];
const bare = obs["idle without the module"];
row("idle, CPU of the user-interface thread", `${number(idle.userInterfaceCpu_percent)} %`,
  `without ${number(bare.userInterfaceCpu_percent)} %`,
  `${number(idle.userInterfaceCpu_percent - bare.userInterfaceCpu_percent)} % more`);
row("idle, wake-ups of the user-interface thread", `${number(idle.userInterfaceWakeUps_per_s, 1)} /s`,
  `without ${number(bare.userInterfaceWakeUps_per_s, 1)} /s`,
  `${number(idle.userInterfaceWakeUps_per_s - bare.userInterfaceWakeUps_per_s, 1)} /s more`);
row("idle, memory", `${number(idle.memory_MiB, 1)} MiB`, `without ${number(bare.memory_MiB, 1)} MiB`,
  `${number(idle.memory_MiB - bare.memory_MiB, 1)} MiB more`);
row("idle, frames skipped", `${idle.skippedFrames} of ${idle.renderedFrames}`,
  `without ${bare.skippedFrames} of ${bare.renderedFrames}`, "");

console.log(["| what | Kestrune | beside | ratio |", "|---|---|---|---|", ...rows].join("\n"));
