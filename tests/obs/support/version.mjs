// The version that the module must report.

import { readFile } from "node:fs/promises";
import path from "node:path";

const buildspec = path.resolve(import.meta.dirname, "..", "..", "..", "buildspec.json");

/** The version as buildspec.json names it, for example "1.2.3". */
export const { version } = JSON.parse(await readFile(buildspec, "utf8"));
