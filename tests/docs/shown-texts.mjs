// The texts that the dock shows, taken from the module's sources.

import { readFileSync } from "node:fs";

const stringLiteral = String.raw`"(?:[^"\\]|\\.)*"`;
/** Literals that the compiler joins are one text. */
const literals = new RegExp(String.raw`(?:u|u8)?${stringLiteral}(?:\s+${stringLiteral})*`, "g");

/** What literals other than texts look like. */
const notShown = [
  /^[a-z][A-Za-z_-]*$/, // object names, keys, members of events
  /^--[a-z-]+$/, // switches of the helper
  /^(color:|QPushButton\{)/, // style sheets
  /^\/VERYSILENT /, // switches of the installer
  /^(OBS_KEY_|KESTRUNE_|LOCALAPPDATA$)/, // keys by their name in OBS, environment variables
  /^[A-Za-z./]*\.(exe|json|lnk)$/, // files
  /^<(a |br)$/, // what a link and a line break begin with
  /^[^A-Za-z]*$/, // separators
  /^\(\^/, // patterns
  /^x[0-9a-f]{2}/, // bytes
  /^nrvf/, // ends of lines
];

/** Single literals that no reader sees either. */
const notShownEither = [
  ...["KestruneDock", "Toggle", "kestrune.clip_that", "/addons"],
  ...["SimpleOutput", "AdvOut", "RecRB", "RecRBTime", "enabled Replay Buffer (%d s) in the profile"],
  // Beginnings that other texts are looked for by.
  ...["Ready", "Update"],
  // Parts of pictures.
  ...["IHDR", "BM", "P3", "P6"],
  // The unit after a number, and the names of keys.
  ...[" s", "Ctrl", "Alt", "Shift", "Win", "F%1"],
];

/** The source without its quotation marks that begin no literal: in names of files and in comments. */
function withoutOtherQuotes(source) {
  return source.replace(/^\s*#include.*$/gm, "").replace(/(^|\s)\/\/.*$/gm, "");
}

function unescaped(text) {
  return text.replace(/\\(.)/g, "$1");
}

/**
 * The texts in a C++ source, as a reader sees them: without formatting, "&&" as "&". Placeholders stay as %1, and a
 * text that is put together at run time comes in its pieces.
 */
export function shownTexts(source) {
  const found = withoutOtherQuotes(source).match(literals) ?? [];
  return found
    .map((literal) => [...literal.matchAll(/"((?:[^"\\]|\\.)*)"/g)].map(([, part]) => part).join(""))
    .map((text) => unescaped(text))
    .filter((text) => !notShownEither.includes(text) && !notShown.some((pattern) => pattern.test(text)))
    .map((text) =>
      text
        .replace(/<[^>]+>/g, "")
        .replaceAll("&&", "&")
        .trim(),
    );
}

/** The texts in these files, each once. */
export function shownTextsOfFiles(files) {
  return [...new Set(files.flatMap((file) => shownTexts(readFileSync(file, "utf8"))))];
}
