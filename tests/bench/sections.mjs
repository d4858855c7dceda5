// sections.mjs: what pictures, long answers and many answers cost the dock, without OBS. Prints rows.

import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { number, row } from "./row.mjs";
import { builtFolder } from "./session.mjs";

/** The results of one program, by name. */
async function results(program) {
  const env = { ...process.env, QT_QPA_PLATFORM: "offscreen" };
  const output = await run(path.join(builtFolder, program), ["--benchmark_format=json"], { env });
  const { benchmarks } = JSON.parse(output);
  const failed = benchmarks.find((result) => result.error_occurred);
  if (failed) {
    throw new Error(`${failed.name}: ${failed.error_message}`);
  }
  return new Map(benchmarks.map((result) => [result.name, result]));
}

const previews = await results("bench_preview");
for (const format of ["jpeg", "png"]) {
  const { cpu_time } = previews.get(`preview/${format}`);
  row(`preview of 1080x1920 px, ${format.toUpperCase()}`, `${number(cpu_time)} ms`, "", "16.7 ms");
}

const scale = await results("bench_scale");
for (const [what, name, counts] of [
  ["recent clips", "recentClips", [100, 1000, 10_000]],
  ["entries of a list of choices", "choices", [10, 100, 1000]],
  ["chat triggers in one answer", "triggers", [1, 10, 100]],
  ["polls, of which a day has 17,280", "polls", [172, 1728, 17_280]],
]) {
  const found = counts.map((count) => ({ count, ...scale.get(`${name}/${count}`) }));
  const each = found.map(({ count, cpu_time }) => number(cpu_time / 1000 / count, 2)).join(" / ");
  const { grown_KiB, cpu_time } = found.at(-1);
  row(
    `${what}: ${counts.map((count) => count.toLocaleString("en")).join(" / ")}`,
    `${each} µs each`,
    `${number(cpu_time / 1e6)} ms in all`,
    grown_KiB === undefined ? "no more each" : `no more each; memory grown by ${grown_KiB} KiB (goal 0)`,
  );
}
