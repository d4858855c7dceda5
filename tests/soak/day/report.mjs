// What a day on air came to: the table of its turns, the figures at its end, and what was wrong.

import { writeFile } from "node:fs/promises";
import path from "node:path";

// What comes and goes in OBS by itself.
const tolerance = 5;

const resources = ["memory_KiB", "descriptors", "threads"];
const frameCounts = ["frames", "notRendered", "notEncoded", "notSent"];

/** How the figures of an OBS have grown from one time to another. */
export function growth(before, after) {
  return Object.fromEntries(Object.keys(after).map((name) => [name, after[name] - before[name]]));
}

/** Whether descriptors or threads have become more in the OBS with the module, and not in the other one. */
export function leaks(samples) {
  const [quarter, end] = quarterAndEnd(samples);
  return ["descriptors", "threads"].filter((name) => {
    const grown = (who) => end[who][name] - quarter[who][name];
    return grown("station") > Math.max(grown("control"), 0) + tolerance;
  });
}

function quarterAndEnd(samples) {
  const end = samples.at(-1);
  return [samples.find(({ seconds }) => seconds >= end.seconds / 4), end];
}

/** Writes the samples as a table for soak-graph.mjs. */
export async function writeTable(folder, samples) {
  const columns = ["station", "control"].flatMap((who) => resources.map((name) => [who, name]));
  const title = ([who, name]) => `${name}_${who === "station" ? "with" : "without"}`;
  const rows = samples.map((sample) => columns.map(([who, name]) => sample[who][name]));
  const lines = [columns.map(title), ...rows].map((row) => row.join(","));
  await writeFile(path.join(folder, "day.csv"), `${lines.join("\n")}\n`);
}

/** Prints what a person wants to know. */
export function printReport({ samples, clips, suspension, sinks, faults }) {
  const [quarter, end] = quarterAndEnd(samples);
  const made = clips.filter((clip) => clip.made).length;
  const minutes = Math.round(end.seconds / 60);
  console.log(`\n${minutes} minutes on air: ${clips.length} clips asked for, ${made} Shorts made, `);
  console.log(`${clips.filter(({ told }) => told).length} failures told, ${faults.length} faults`);
  printClips(clips);
  for (const name of resources) {
    const pair = (who) => `${quarter[who][name]} to ${end[who][name]}`;
    console.log(`${name}: ${pair("station")} with the module, ${pair("control")} without`);
  }
  for (const who of ["station", "control"]) {
    const whole = growth(samples[0][who], end[who]);
    const counts = (of) => frameCounts.map((name) => `${name} ${of?.[name]}`).join(", ");
    console.log(`${who === "station" ? "with" : "without"} the module: ${counts(whole)}`);
    console.log(`  of that in the suspension: ${counts(suspension?.[who])}`);
    console.log(`  ${((100 * whole.processor_s) / end.seconds).toFixed(1)} % of a processor`);
    console.log(`  frames that the sink took, stream by stream: ${sinks[who].join(", ")}`);
  }
  faults.forEach((fault) => console.log(`FAULT: ${fault}`));
}

function printClips(clips) {
  for (const { way, trouble, made, text } of clips) {
    console.log(`| ${trouble} | ${way} | ${made ? "Short" : text} |`);
  }
}
