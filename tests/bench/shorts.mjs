// shorts.mjs [SECONDS]: what the sample helper takes for a Short of each layout, beside ffmpeg alone: one call that does
// nothing but decode, scale and encode, and the layout as one would first write it. Prints rows.

import { mkdir, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { run } from "../../tools/obs/command.mjs";
import { number, row } from "./row.mjs";

const length_s = Number(process.argv[2] ?? 6);
const folder = path.resolve("build", "bench", "shorts");
const helper = path.join(process.env.KESTRUNE_BUILD_DIR, "sample-helper", "sample-helper");
const replay = path.join(folder, "replay.mkv");
const subtitles = path.join(folder, "replay.srt");

// As encoders.cpp and encoding.cpp set them.
const encoding = ["-c:v", "libx264", "-preset", "superfast", "-bf", "0", "-crf", "22", "-pix_fmt", "yuv420p"];
const sound = ["-c:a", "aac", "-b:a", "160k"];

const bare = "crop=ih*9/16:ih,scale=1080:1920";
const camera = "crop=iw*0.3:ih*0.45:iw*0.7:ih*0.55";
const disc = "geq=lum='lum(X,Y)':cb='cb(X,Y)':cr='cr(X,Y)':a='255*lt(hypot(X-220,Y-220),220)'";

function stacked(upper, upper_px, lower, lower_px) {
  return (
    `split[a][b];[a]${upper},scale=1080:${upper_px},setsar=1[upper];` +
    `[b]${lower},scale=1080:${lower_px},setsar=1[lower];[upper][lower]vstack`
  );
}

/** Each layout as one would first write it, without a thought for its speed. */
const obvious = {
  gameplay: bare,
  facecam: stacked("crop=iw*0.3:ih*0.3:iw*0.7:ih*0.7", 608, "crop=ih*1080/1312:ih", 1312),
  vtuber: stacked("crop=iw*0.3:ih*0.416:iw*0.7:ih*0.567", 840, "crop=ih:ih", 1080),
  podcast: stacked("crop=iw/2:iw/2*960/1080:0", 960, "crop=iw/2:iw/2*960/1080:iw/2", 960),
  "vtuber-bubble":
    `split=3[a][b][c];[a]${bare},boxblur=40:2,setsar=1[back];[b]crop=ih:ih,scale=1080:1080,setsar=1[game];` +
    `[c]${camera},crop=ih:ih,scale=440:440,format=yuva420p,${disc},setsar=1[face];` +
    "[back][game]overlay=0:160[lower];[lower][face]overlay=320:1020",
};

/** Runs a program to its end; returns how long it took and the processor time of it and its children, in seconds. */
async function measured(program, args) {
  const env = { ...process.env, LC_ALL: "C", TIMEFORMAT: "%R %U %S", KESTRUNE_SAMPLE_HELPER_HOME: folder };
  const script = '{ time "$@" >"$0" 2>&1; } 2>&1 || { cat "$0" >&2; exit 1; }';
  const log = path.join(folder, "log");
  const times = await run("bash", ["-c", script, log, program, ...args], { env, limit_ms: 1_200_000 });
  const [time_s, user_s, system_s] = times.trim().split("\n").at(-1).split(" ").map(Number);
  return { time_s, processor_s: user_s + system_s };
}

function ffmpeg(filters) {
  const output = path.join(folder, "by-ffmpeg.mp4");
  // The helper runs ffmpeg at this priority.
  const args = ["-n", "10", "ffmpeg", "-v", "error", "-nostdin", "-y", "-i", replay, "-filter_complex", filters];
  return measured("nice", [...args, ...encoding, ...sound, "-movflags", "+faststart", output]);
}

function byHelper(layout, style) {
  const choices = ["--layout", layout, "--style", style];
  return measured(helper, ["--process", replay, "--seconds", String(length_s), ...choices]);
}

/** What OBS records: everything moves, with some noise and sound. Somebody speaks all the time. */
async function makeReplay() {
  await rm(folder, { recursive: true, force: true });
  await mkdir(folder, { recursive: true });
  const picture = "testsrc2=s=1920x1080:r=60,noise=alls=6:allf=t";
  const inputs = ["-f", "lavfi", "-i", picture, "-f", "lavfi", "-i", "sine=r=48000", "-t", String(length_s)];
  const fast = ["-c:v", "libx264", "-preset", "ultrafast", "-b:v", "20M", "-pix_fmt", "yuv420p", "-c:a", "aac"];
  await run("ffmpeg", ["-v", "error", "-nostdin", "-y", ...inputs, ...fast, replay], { limit_ms: 1_200_000 });
  const time = (second) => new Date(second * 1000).toISOString().slice(11, 19);
  const starts = Array.from({ length: Math.ceil(length_s / 3) }, (_, index) => 3 * index);
  const cues = starts.map(
    (from, index) => `${index + 1}\n${time(from)},000 --> ${time(from + 2)},900\nThis is what somebody says now\n`,
  );
  await writeFile(subtitles, cues.join("\n"));
}

const seconds = ({ time_s, processor_s }) => `${number(processor_s)} s in ${number(time_s)} s`;

await makeReplay();
for (const layout of Object.keys(obvious)) {
  // In turns, so that all see the machine in the same state.
  const plain = await ffmpeg(bare);
  const made = await byHelper(layout, "neon");
  const usual = await ffmpeg(`${obvious[layout]},subtitles=${subtitles}`);
  const ratio = number(made.processor_s / plain.processor_s, 2);
  row(
    `Short of ${length_s} s, ${layout}: processor time`,
    `${seconds(made)}, ${ratio} times bare`,
    `bare ffmpeg ${seconds(plain)}; obvious graph ${seconds(usual)}`,
    `${layout === "gameplay" ? "1.08" : "1.20"} times bare`,
  );
}
