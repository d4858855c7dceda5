// Whether the dock shows a picture as the preview.

import { open } from "node:fs/promises";
import { error, warning } from "./findings.mjs";

// The dock's limits.
const largestFile_bytes = 7 * 1024 * 1024;
const largestPicture_px = 1440 * 2560;

// Signatures of the formats that every Qt reads: PNG, JPEG, GIF, BMP.
const png = "89504e470d0a1a0a";
const signatures = [png, "ffd8ff", "47494638", "424d"];

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
  const { head, size } = await headOf(file);
  const begins = (signature) => head.toString("hex").startsWith(signature);
  if (size > largestFile_bytes) {
    return [error(`the preview has ${size} bytes; the dock hides pictures of more than 7 MiB: ${file}`)];
  }
  if (!signatures.some(begins)) {
    return [warning(`the preview is not a PNG, JPEG, GIF or BMP file, and may be hidden: ${file}`)];
  }
  // Only a PNG has its size where it is easily found.
  const [width, height] = begins(png) ? [head.readUInt32BE(16), head.readUInt32BE(20)] : [0, 0];
  return width * height > largestPicture_px
    ? [error(`the preview has ${width} x ${height} pixels; the dock hides pictures of more than 1440 x 2560: ${file}`)]
    : [];
}
