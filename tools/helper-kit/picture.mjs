// Whether the dock shows a picture as the preview.

import { open } from "node:fs/promises";
import { error, warning } from "./findings.mjs";

// The dock's limits.
const maxFile_bytes = 9 * 1024 * 1024;
const maxJpeg_bytes = 4 * 1024 * 1024;
const maxPicture_px = 2 * 1080 * 1920;

// Signatures of the formats that the dock reads: PNG, JPEG, BMP, PPM.
const png = "89504e470d0a1a0a";
const jpeg = "ffd8ff";
const signatures = [png, jpeg, "424d", "5033", "5036"];

/** Returns the first bytes of a file and its `size`. */
async function headOf(file) {
  const handle = await open(file);
  try {
    const { buffer } = await handle.read(Buffer.alloc(24), 0, 24, 0);
    return { head: buffer, size: (await handle.stat()).size };
  } finally {
    await handle.close();
  }
}

/** Returns findings for an existing file. */
export async function complaintsAboutPicture(file) {
  try {
    return complaintsAbout(file, await headOf(file));
  } catch ({ code }) {
    return [error(`the preview cannot be read (${code}), so the dock hides it: ${file}`)];
  }
}

function complaintsAbout(file, { head, size }) {
  const begins = (signature) => head.toString("hex").startsWith(signature);
  if (size > maxFile_bytes) {
    return [error(`the preview has ${size} bytes; the dock hides pictures of more than 9 MiB: ${file}`)];
  }
  if (!signatures.some(begins)) {
    return [warning(`the preview is not a PNG, JPEG, BMP or PPM file, so the dock hides it: ${file}`)];
  }
  if (begins(jpeg) && size > maxJpeg_bytes) {
    return [error(`the preview has ${size} bytes; the dock hides JPEG pictures of more than 4 MiB: ${file}`)];
  }
  // Only a PNG has its size where it is easily found.
  const [width, height] = begins(png) ? [head.readUInt32BE(16), head.readUInt32BE(20)] : [0, 0];
  return width * height > maxPicture_px
    ? [
        error(
          `the preview has ${width} x ${height} pixels; the dock hides pictures of more than twice 1080 x 1920: ${file}`,
        ),
      ]
    : [];
}
