// Checks what an answer's members promise: that files exist and links are valid.

import { open, stat } from "node:fs/promises";
import path from "node:path";
import { error, warning } from "./findings.mjs";

/** `value`, or an empty list: the dock reads members of a wrong type as missing. */
function listOf(value) {
  return Array.isArray(value) ? value : [];
}

async function complaintsAboutFile(what, file) {
  if (typeof file !== "string" || file === "") {
    return [];
  }
  if (!path.isAbsolute(file)) {
    return [error(`${what} is no full path, and the dock runs in another folder: ${file}`)];
  }
  const found = await stat(file).catch(() => undefined);
  if (!found?.isFile()) {
    return [error(`${what} names a file that is not there: ${file}`)];
  }
  return found.size > 0 ? [] : [error(`${what} names an empty file: ${file}`)];
}

function status(event) {
  const findings = [];
  if (event.linked === true && !event.login) {
    findings.push(warning(`an account is linked but "login" is empty: the dock shows "Connected as @"`));
  }
  for (const [current, list] of [
    ["layout", "layouts"],
    ["style", "styles"],
    ["font", "fonts"],
  ]) {
    const keys = listOf(event[list]);
    if (event[current] && keys.length > 0 && !keys.includes(event[current])) {
      findings.push(warning(`"${current}" is "${event[current]}", which "${list}" does not offer`));
    }
  }
  return findings;
}

async function recent(event) {
  const findings = [];
  if (!event.folder) {
    findings.push(warning(`"folder" is empty: "Open output folder" does nothing`));
  } else if (!(await stat(event.folder).catch(() => undefined))?.isDirectory()) {
    findings.push(error(`"folder" names a folder that is not there: ${event.folder}`));
  }
  for (const [index, item] of listOf(event.items).entries()) {
    findings.push(...(await complaintsAboutFile(`"items[${index}].path"`, item?.path)));
  }
  return findings;
}

// Signatures of the formats that every Qt reads: PNG, JPEG, GIF, BMP.
const pictureBeginnings = ["89504e470d0a1a0a", "ffd8ff", "47494638", "424d"];

async function isPicture(file) {
  const handle = await open(file);
  const { buffer } = await handle.read(Buffer.alloc(8), 0, 8, 0).finally(() => handle.close());
  return pictureBeginnings.some((beginning) => buffer.toString("hex").startsWith(beginning));
}

async function preview(event) {
  if (!event.path) {
    return [warning(`"preview" names no "path", so the preview is hidden`)];
  }
  const findings = await complaintsAboutFile(`"path" of "preview"`, event.path);
  if (findings.length === 0 && !(await isPicture(event.path))) {
    findings.push(warning(`the preview is no PNG, JPEG, GIF or BMP file, and may be hidden: ${event.path}`));
  }
  return findings;
}

function chat(event) {
  if (!event.error && event.enabled === true && event.granted !== true && !event.consent_url) {
    return [error(`"consent_url" is missing while "granted" is false: the user is shown a link that leads nowhere`)];
  }
  return [];
}

async function done(event) {
  const findings = [];
  if (listOf(event.formatted).length === 0) {
    findings.push(warning(`"formatted" is empty: the dock shows "Your Short is ready." without a name`));
  }
  for (const [index, file] of listOf(event.formatted).entries()) {
    findings.push(...(await complaintsAboutFile(`"formatted[${index}]"`, file)));
  }
  return findings;
}

function update(event) {
  return event.update === true && !event.latest
    ? [error(`"latest" is empty: the dock offers "Update available v — Update now"`)]
    : [];
}

const checks = {
  status,
  recent,
  preview,
  chat,
  done,
  update,
  downloaded: (event) => complaintsAboutFile(`"path" of "downloaded"`, event.path),
  error: (event) => [warning(`it ends in an "error" event; the user reads: ${event.error}`)],
};

/** The promises that an event breaks, as findings. */
export async function brokenPromises(event) {
  return (await checks[event.event]?.(event)) ?? [];
}
