// table.mjs FOLDER: prints the results of ./run bench as a Markdown table.

import { readFile } from "node:fs/promises";
import path from "node:path";

const folder = process.argv[2];
const read = (name) => readFile(path.join(folder, name), "utf8");
const jsonLines = async (name) =>
  (await read(name))
    .split("\n")
    .filter((line) => line.startsWith("{"))
    .map((line) => JSON.parse(line));
const byName = (lines) => Object.fromEntries(lines.map(({ name, ...values }) => [name, values]));

const benchmarks = async (subject) => byName(JSON.parse(await read(`${subject}.json`)).benchmarks);
const logOf = async (subject) => byName(await jsonLines(`${subject}.log`));

const stream = await benchmarks("event_stream");
const preview = await benchmarks("preview");
const press = await logOf("press_to_save");
const starts = await logOf("starts");
const stalls = await logOf("stalls");
const idle = await logOf("idle");

const rows = [];
const row = (what, measured, beside, ratio) => rows.push(`| ${what} | ${measured} | ${beside} | ${ratio} |`);
const number = (value, digits = 2) => value.toFixed(digits);

const start = (module) => starts[`start of ${module}`].median_ms;
for (const peer of ["obs-websocket", "frontend-tools"]) {
  row(
    "start-up, median",
    `${number(start("kestrune"))} ms`,
    `${peer} ${number(start(peer))} ms`,
    number(start("kestrune") / start(peer)),
  );
}
row("start-up, left to OBS's event queue, median", `${number(starts["queued by the start"].median_ms)} ms`, "", "");

for (const [what, limit] of [
  ["key press to save", "a queued call"],
  ["key press to save, during a flood", "a queued call"],
  ["saved replay to first instruction", "posix_spawn to first instruction"],
]) {
  for (const [kind, member] of [
    ["median", "median_us"],
    ["99th percentile", "p99_us"],
  ]) {
    row(
      `${what}, ${kind}`,
      `${number(press[what][member], 0)} µs`,
      `${limit} ${number(press[limit][member], 0)} µs`,
      number(press[what][member] / press[limit][member]),
    );
  }
}

const speed = (name) => stream[name].bytes_per_second / 1e6;
for (const chunk of [1, 4096, 65536]) {
  row(
    `events, ${chunk} bytes a read`,
    `${number(speed(`events/${chunk}`), 0)} MB/s`,
    `bare parse ${number(speed("bareParse"), 0)} MB/s`,
    number(speed(`events/${chunk}`) / speed("bareParse")),
  );
}
const eventTime = (size, chunk) => stream[`hugeEvent/${size}/${chunk}`].real_time;
for (const size of [1, 10, 100, 1000]) {
  const bare = stream[`bareHugeEvent/${size}`].real_time;
  row(
    `an event of ${size} MiB, 65536 bytes a read`,
    `${number(eventTime(size, 65536), 1)} ms`,
    `bare parse ${number(bare, 1)} ms`,
    number(bare / eventTime(size, 65536)),
  );
}
for (const [size, chunks] of [
  [10, [1, 4096, 65536]],
  [100, [4096, 65536]],
  [1000, [4096, 65536]],
]) {
  for (const chunk of chunks) {
    row(
      `an event of ${size} MiB, ${chunk} bytes a read`,
      `${number(eventTime(size, chunk), 1)} ms`,
      `${size / 10} MiB ${number(eventTime(size / 10, chunk), 1)} ms`,
      number(eventTime(size, chunk) / eventTime(size / 10, chunk)),
    );
  }
}

row(
  "preview of 1080x1920 px: decode",
  `${number(preview.decode.real_time, 1)} ms`,
  `fit into the dock ${number(preview.fit.real_time, 1)} ms`,
  `${number((100 * preview.decode.real_time) / (preview.decode.real_time + preview.fit.real_time), 0)} % of both`,
);

const isPreview = ({ receiver }) => receiver.endsWith("--preview");
const held = ({ receiver, event, longestProcessor_ms }) =>
  `${number(longestProcessor_ms, 1)} ms (${event}, ${receiver.trim()})`;
const inDock = stalls["stalls with the module, dock"].longest;
for (const [what, kinds] of [
  ["the preview", inDock.filter(isPreview)],
  ["else", inDock.filter((k) => !isPreview(k))],
]) {
  row(
    `longest hold of the user interface, ${what}`,
    held(kinds[0]),
    `OBS itself ${held(stalls["stalls without the module, OBS"].longest[0])}`,
    number(kinds[0].longestProcessor_ms / stalls["stalls without the module, OBS"].longest[0].longestProcessor_ms),
  );
}

const bufferStart = stalls["stalls with the module, OBS starting its Replay Buffer"];
row(
  "longest hold of the user interface, OBS starting its Replay Buffer for the module",
  `${number(bufferStart.longestProcessor_ms, 1)} ms`,
  "",
  "",
);

const skipped = ({ skippedFrames, renderedFrames }) => `${skippedFrames} of ${renderedFrames}`;
row(
  "frames skipped, busy",
  skipped(stalls["stalls with the module"]),
  `without ${skipped(stalls["stalls without the module"])}`,
  "",
);

const without = idle["idle without the module"];
for (const state of ["dock hidden", "dock shown"]) {
  const values = idle[`idle, ${state}`];
  const idleRow = (what, member, unit, digits) => {
    const more = values[member] - without[member];
    row(
      `idle, ${state}: ${what}`,
      `${number(values[member], digits)} ${unit}`,
      `without ${number(without[member], digits)} ${unit}`,
      `${number(Math.abs(more), digits)} ${unit} ${more < 0 ? "less" : "more"}`,
    );
  };
  idleRow("processor time of the dock's own events", "dockCpu_percent", "%", 4);
  idleRow("events of the dock", "dockWakeUps_per_s", "/s", 2);
  idleRow("processor time of the user interface", "userInterfaceCpu_percent", "%", 2);
  idleRow("wake-ups of the user interface", "userInterfaceWakeUps_per_s", "/s", 1);
  idleRow("memory", "memory_MiB", "MiB", 1);
  idleRow("memory grown meanwhile", "grown_MiB", "MiB", 2);
  row(`idle, ${state}: frames skipped`, skipped(values), `without ${skipped(without)}`, "");
}

console.log(["| what | Kestrune | beside | ratio |", "|---|---|---|---|", ...rows].join("\n"));
