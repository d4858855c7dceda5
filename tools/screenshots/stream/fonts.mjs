// The fonts of captions, for the pictures only.

import { mkdir, symlink } from "node:fs/promises";
import path from "node:path";

const packages = path.join(import.meta.dirname, "..", "node_modules", "@expo-google-fonts");
const files = [
  "bangers/400Regular/Bangers_400Regular.ttf",
  "bebas-neue/400Regular/BebasNeue_400Regular.ttf",
  "inter/400Regular/Inter_400Regular.ttf",
  "inter/700Bold/Inter_700Bold.ttf",
  "montserrat/400Regular/Montserrat_400Regular.ttf",
  "montserrat/700Bold/Montserrat_700Bold.ttf",
];

export function fontFiles() {
  return files.map((file) => path.join(packages, file));
}

/** Installs the fonts for programs whose data folder (XDG_DATA_HOME) this is. */
export async function installFonts(dataFolder) {
  const folder = path.join(dataFolder, "fonts");
  await mkdir(folder, { recursive: true });
  for (const file of fontFiles()) {
    await symlink(file, path.join(folder, path.basename(file)));
  }
}
