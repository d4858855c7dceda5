// Makes the test video for OBS, and analyses videos with ffmpeg's tools.

import { run } from "./command.mjs";

/** A moving, counting test picture with a tone; size in pixels. */
export async function makeTestVideo(file, { width, height, fps, seconds }) {
  await run("ffmpeg", [
    "-v",
    "error",
    "-y",
    "-f",
    "lavfi",
    "-i",
    `testsrc2=size=${width}x${height}:rate=${fps}:duration=${seconds}`,
    "-f",
    "lavfi",
    "-i",
    `sine=frequency=440:beep_factor=4:sample_rate=48000:duration=${seconds}`,
    "-c:v",
    "libx264",
    "-preset",
    "ultrafast",
    "-pix_fmt",
    "yuv420p",
    "-g",
    String(fps),
    "-c:a",
    "aac",
    "-shortest",
    file,
  ]);
}

/**
 * Returns `width` and `height` in pixels, `seconds`, `bytes`, `videoCodec` and `audioCodec` (undefined without sound).
 * Throws if ffprobe cannot read the file or finds no video.
 */
export async function probeVideo(file) {
  const text = await run("ffprobe", ["-v", "error", "-of", "json", "-show_format", "-show_streams", file]);
  const { format, streams } = JSON.parse(text);
  const video = streams.find((stream) => stream.codec_type === "video");
  if (!video) {
    throw new Error(`${file} has no video stream`);
  }
  return {
    width: video.width,
    height: video.height,
    seconds: Number(format.duration),
    bytes: Number(format.size),
    videoCodec: video.codec_name,
    audioCodec: streams.find((stream) => stream.codec_type === "audio")?.codec_name,
  };
}

/** Decodes the whole file; throws ffmpeg's message if anything is damaged. */
export async function decodeFully(file) {
  await run("ffmpeg", ["-v", "error", "-xerror", "-i", file, "-f", "null", "-"]);
}
