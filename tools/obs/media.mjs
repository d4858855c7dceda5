// The test video that OBS plays, and what ffmpeg's tools say about the videos that come out.

import { run } from "./command.mjs";

/** Writes a video of a moving, counting test picture with a tone; size in pixels, length in seconds. */
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
 * Describes a video file: `width` and `height` in pixels, `seconds`, `bytes`, `videoCodec` and `audioCodec` (undefined
 * without sound). Throws when ffprobe cannot read the file or finds no video in it.
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

/** Decodes every frame and sample of a video file; throws with ffmpeg's words when anything in it is damaged. */
export async function decodeFully(file) {
  await run("ffmpeg", ["-v", "error", "-xerror", "-i", file, "-f", "null", "-"]);
}
