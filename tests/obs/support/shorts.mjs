import assert from "node:assert/strict";
import { decodeFully, probeVideo } from "../../../tools/obs/media.mjs";

/**
 * Asserts that `short` is a playable vertical video with sound that holds the last `clipSeconds` of `replay`, or all of
 * a shorter one.
 */
export async function assertShort(short, replay, clipSeconds) {
  const [made, saved] = await Promise.all([probeVideo(short), probeVideo(replay), decodeFully(short)]);
  assert.deepEqual([made.width, made.height], [1080, 1920]);
  assert.ok(made.audioCodec, `${short} has no sound`);
  const expected = Math.min(clipSeconds, saved.seconds);
  assert.ok(
    Math.abs(made.seconds - expected) <= 1.5,
    `${short} lasts ${made.seconds} s, not about ${expected} s of a replay of ${saved.seconds} s`,
  );
}
