// Makes Shorts with the sample helper, and pictures of them.

import { mkdir, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { createCanvas, loadImage } from "@napi-rs/canvas";
import { run } from "../obs/command.mjs";
import { shots } from "./shots/shorts.mjs";
import { installFonts } from "./stream/fonts.mjs";
import { makeVideo, registerFonts } from "./stream/stream.mjs";

const folder = path.resolve(import.meta.dirname, "..", "..", "build", "screenshots", "shorts");
const helper = path.join(process.env.KESTRUNE_BUILD_DIR, "sample-helper", "sample-helper");
const replayLength_s = 4;
/** When the picture is taken, in seconds. */
const moment = 2.3;
const gap = 16;
const lineHeight = 30;

/** Makes the replay of a stream, with a subtitle file of what is said. Returns its path. */
async function makeReplay(stream, says, name) {
  const replay = path.join(folder, `${name}.mp4`);
  await makeVideo(replay, stream, { width: 1920, fps: 30, seconds: replayLength_s });
  await writeFile(path.join(folder, `${name}.srt`), `1\n00:00:01,000 --> 00:00:04,000\n${says}\n`);
  return replay;
}

/** Lets the sample helper make the Short, and returns a picture of it. */
async function makeShort({ stream, says, look, camera }, name, width) {
  const replay = await makeReplay(stream, says, name);
  const options = Object.entries(look).flatMap(([option, key]) => [`--${option}`, key]);
  const env = {
    ...process.env,
    XDG_DATA_HOME: folder,
    KESTRUNE_SAMPLE_HELPER_HOME: path.join(folder, "state"),
    ...(camera && { KESTRUNE_SAMPLE_HELPER_CAMERA: camera }),
  };
  const answer = await run(helper, ["--process", replay, "--seconds", "30", ...options], { env, limit_ms: 600_000 });
  const done = JSON.parse(answer);
  const picture = path.join(folder, `${name}.png`);
  const frame = ["-ss", String(moment), "-i", done.formatted[0], "-frames:v", "1"];
  await run("ffmpeg", ["-v", "error", "-y", ...frame, "-vf", `scale=${width}:-2:flags=area`, picture]);
  return loadImage(picture);
}

function write(context, { label }, middle, top) {
  context.textAlign = "center";
  label.forEach((line, index) => {
    context.font = index === 0 ? 'bold 22px "Inter"' : '18px "Inter"';
    context.fillStyle = index === 0 ? "#1f2430" : "#5a6272";
    context.fillText(line, middle, top + lineHeight * (index + 1) - 6);
  });
}

/** Puts the pictures side by side, with their labels. */
function arrange(pictures, shorts) {
  const [{ width, height }] = pictures;
  const lines = Math.max(...shorts.map(({ label }) => label.length));
  const canvas = createCanvas(pictures.length * (width + gap) - gap, height + lines * lineHeight);
  const context = canvas.getContext("2d");
  context.fillStyle = "white";
  context.fillRect(0, 0, canvas.width, canvas.height);
  pictures.forEach((picture, index) => {
    const x = index * (width + gap);
    context.drawImage(picture, x, 0);
    write(context, shorts[index], x + width / 2, height);
  });
  return canvas;
}

async function photograph({ name, shorts }, imagesFolder) {
  const pictures = [];
  for (const [index, short] of shorts.entries()) {
    pictures.push(await makeShort(short, `${name}-${index + 1}`, shorts.length === 1 ? 405 : 256));
  }
  const file = path.join(imagesFolder, `${name}.png`);
  await writeFile(file, await arrange(pictures, shorts).encode("png"));
  await run("mogrify", ["-strip", "-define", "png:exclude-chunks=date,time", "-quality", "95", file]);
  console.log(`screenshots: ${path.relative(process.cwd(), file)}`);
}

export async function photographShorts(imagesFolder) {
  await rm(folder, { recursive: true, force: true });
  await mkdir(folder, { recursive: true });
  await installFonts(folder);
  registerFonts();
  for (const shot of shots) {
    await photograph(shot, imagesFolder);
  }
}
