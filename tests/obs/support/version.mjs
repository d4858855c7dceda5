import { readFile } from "node:fs/promises";
import path from "node:path";

const buildspec = path.resolve(import.meta.dirname, "..", "..", "..", "buildspec.json");

/** The version that the module must report, such as "1.2.3". */
export const { version } = JSON.parse(await readFile(buildspec, "utf8"));
