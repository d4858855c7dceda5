import { mkdir } from "node:fs/promises";
import path from "node:path";
import { run } from "./command.mjs";

/** Writes a PNG of the display, or of its `area` ({x, y, width, height} in pixels); returns its path. */
export async function screenshot(display, file, area) {
  await mkdir(path.dirname(file), { recursive: true });
  const crop = area ? ["-crop", `${area.width}x${area.height}+${area.x}+${area.y}`, "+repage"] : [];
  await run("import", ["-window", "root", ...crop, file], { env: { ...process.env, DISPLAY: display } });
  return file;
}
