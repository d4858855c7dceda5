// Pictures and videos of a stream: a drawn game and who plays it.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { writeFile } from "node:fs/promises";
import { GlobalFonts, createCanvas } from "@napi-rs/canvas";
import { fontFiles } from "./fonts.mjs";
import { drawGame } from "./game.mjs";
import { ana, ben, drawCamera, drawPerson, figure } from "./people.mjs";

/** What the drawings are made for, in pixels. */
export const full = { width: 1920, height: 1080 };
/** The lower right corner, where the sample helper looks for a camera. */
export const cameraArea = { x: 1344, y: 756, width: 576, height: 324 };

/** Drawings by name; each takes a context and a time in seconds. */
export const streams = {
  game: drawGame,
  camera: (context, time) => drawCamera(context, { x: 0, y: 0, ...full }, ana, time),
  "game and camera"(context, time) {
    drawGame(context, time);
    drawCamera(context, cameraArea, ana, time);
  },
  "game and figure"(context, time) {
    drawGame(context, time);
    drawPerson(context, { x: 1632, y: 800, size: 1.15 }, figure, time);
  },
  "two speakers"(context, time) {
    drawCamera(context, { x: 0, y: 0, width: 960, height: 1080 }, ana, time);
    drawCamera(context, { x: 960, y: 0, width: 960, height: 1080 }, ben, time + 1);
  },
};

/** Lets drawings use the fonts of captions. */
export function registerFonts() {
  fontFiles().forEach((file) => GlobalFonts.registerFromPath(file));
}

function makeCanvas(width) {
  registerFonts();
  const canvas = createCanvas(width, (width * full.height) / full.width);
  const context = canvas.getContext("2d");
  context.scale(width / full.width, width / full.width);
  return { canvas, context };
}

/** Writes a PNG of a stream at this time. */
export async function makePicture(file, stream, { width, time }) {
  const { canvas, context } = makeCanvas(width);
  streams[stream](context, time);
  await writeFile(file, await canvas.encode("png"));
}

/** Writes a video of a stream with a tone; with `still` every frame shows this time. */
export async function makeVideo(file, stream, { width, fps, seconds, still }) {
  const { canvas, context } = makeCanvas(width);
  const size = `${canvas.width}x${canvas.height}`;
  const picture = ["-f", "rawvideo", "-pixel_format", "rgba", "-video_size", size, "-framerate", fps, "-i", "pipe:0"];
  const sound = ["-f", "lavfi", "-i", `sine=frequency=330:sample_rate=48000:duration=${seconds}`];
  const codecs = ["-c:v", "libx264", "-preset", "veryfast", "-crf", "16", "-pix_fmt", "yuv420p", "-c:a", "aac"];
  const ffmpeg = spawn("ffmpeg", ["-v", "error", "-y", ...picture, ...sound, ...codecs, file].map(String), {
    stdio: ["pipe", "ignore", "inherit"],
  });
  const ended = once(ffmpeg, "close");
  for (let frame = 0; frame < fps * seconds; frame += 1) {
    streams[stream](context, still ?? frame / fps);
    if (!ffmpeg.stdin.write(canvas.data())) {
      await Promise.race([once(ffmpeg.stdin, "drain"), ended]);
    }
  }
  ffmpeg.stdin.end();
  const [code] = await ended;
  if (code !== 0) {
    throw new Error(`ffmpeg ended with code ${code}: there is no ${file}`);
  }
}
