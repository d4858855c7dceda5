// Checks what an answer's members promise: that files exist and links are valid.

import { realpath, stat } from "node:fs/promises";
import path from "node:path";
import { dockChoices } from "./choices.mjs";
import { error, warning } from "./findings.mjs";
import { complaintsAboutMarkup } from "./markup.mjs";
import { nearest } from "./near.mjs";
import { complaintsAboutPicture } from "./picture.mjs";

/** `value`, or an empty list: the dock reads members of a wrong type as missing. */
function listOf(value) {
  return Array.isArray(value) ? value : [];
}

/** Paths that are full on no system break the schema. */
function complaintsAboutForeignPath(what, file) {
  return typeof file === "string" && path.win32.isAbsolute(file)
    ? [error(`${what} is a path of another system: ${file}`)]
    : [];
}

async function complaintsAboutFile(what, file) {
  if (typeof file !== "string" || !path.isAbsolute(file)) {
    return complaintsAboutForeignPath(what, file);
  }
  // eslint-disable-next-line no-control-regex
  if (/[\x00-\x1f]/.test(file)) {
    const text = JSON.stringify(file);
    return [error(`${what} contains a control character; is a backslash not doubled? ${text}`)];
  }
  const found = await stat(file).catch(() => undefined);
  if (!found) {
    return [error(`${what} names a file that does not exist: ${file}`)];
  }
  if (found.isDirectory()) {
    return [error(`${what} names a folder where a file is wanted: ${file}`)];
  }
  if (!found.isFile()) {
    return [error(`${what} names something that is not a regular file: ${file}`)];
  }
  return found.size > 0 ? [] : [error(`${what} names an empty file: ${file}`)];
}

/** Keys that are shown as they are although the dock knows a key much like them. */
function complaintsAboutKeys(member, keys) {
  const names = dockChoices[member];
  const findings = [];
  for (const key of keys.filter((each) => typeof each === "string" && !(each in names))) {
    const byName = Object.keys(names).find((each) => names[each].toLowerCase() === key.toLowerCase());
    const meant =
      byName ??
      nearest(
        key,
        Object.keys(names).filter((each) => !keys.includes(each)),
      );
    if (meant) {
      findings.push(warning(`"${member}" offers "${key}", which the dock does not know; did you mean "${meant}"?`));
    }
  }
  const twice = keys.find((key, index) => keys.indexOf(key) !== index);
  return twice === undefined ? findings : [...findings, warning(`"${member}" offers "${twice}" twice`)];
}

function complaintsAboutChoices(event) {
  return ["layout", "style", "font"].flatMap((current) => {
    const list = `${current}s`;
    const keys = listOf(event[list]);
    const isOffered = !event[current] || keys.length === 0 || keys.includes(event[current]);
    return [
      ...(isOffered ? [] : [warning(`"${current}" is "${event[current]}", which "${list}" does not offer`)]),
      ...complaintsAboutKeys(list, keys),
    ];
  });
}

function status(event) {
  const findings = complaintsAboutChoices(event);
  if (!("linked" in event)) {
    findings.push(warning(`"status" lacks "linked": the dock shows "Not connected"`));
  } else if (event.linked === true && !event.login) {
    findings.push(warning(`an account is linked but "login" is empty: the dock shows "Connected as @"`));
  } else if (event.linked === false && event.error && event.error !== "revoked") {
    findings.push(warning(`"error" of "status" is "${event.error}", but only "revoked" is looked at`));
  }
  return findings;
}

async function recent(event) {
  const findings = [];
  if (!event.folder) {
    findings.push(warning(`"folder" is empty: "Open output folder" does nothing`));
  } else if (typeof event.folder !== "string" || !path.isAbsolute(event.folder)) {
    findings.push(...complaintsAboutForeignPath(`"folder"`, event.folder));
  } else {
    const found = await stat(event.folder).catch(() => undefined);
    if (!found) {
      findings.push(error(`"folder" names a folder that does not exist: ${event.folder}`));
    } else if (!found.isDirectory()) {
      findings.push(error(`"folder" names a file where a folder is wanted: ${event.folder}`));
    }
  }
  for (const [index, item] of listOf(event.items).entries()) {
    if (item?.name === "") {
      findings.push(warning(`"items[${index}].name" is empty: the list shows an empty line`));
    }
    findings.push(...(await complaintsAboutFile(`"items[${index}].path"`, item?.path)));
  }
  return findings;
}

async function preview(event) {
  if (!event.path) {
    return [warning(`"preview" names no "path", so the preview is hidden`)];
  }
  const findings = await complaintsAboutFile(`"path" of "preview"`, event.path);
  return findings.length === 0 && path.isAbsolute(event.path) ? complaintsAboutPicture(event.path) : findings;
}

function chat(event) {
  if (event.error) {
    return [];
  }
  if (event.enabled === true && event.granted !== true && !event.consent_url) {
    return [error(`"consent_url" is missing while "granted" is false: the user is shown a link that leads nowhere`)];
  }
  return "command" in event ? [] : [warning(`"chat" has no "command", so the section is not filled in`)];
}

/** Whether both names lead to one file; false if one of them is not there. */
async function isSameFile(a, b) {
  const [first, second] = await Promise.all([a, b].map((file) => realpath(file).catch(() => undefined)));
  return first !== undefined && first === second;
}

async function done(event, { replay }) {
  const shorts = listOf(event.formatted);
  if (shorts.length === 0) {
    return [warning(`"formatted" is empty: the dock shows "Your Short is ready." without a name`)];
  }
  const findings = [];
  for (const [index, file] of shorts.entries()) {
    const found = await complaintsAboutFile(`"formatted[${index}]"`, file);
    if (found.length === 0 && path.isAbsolute(file) && (await isSameFile(file, replay))) {
      found.push(error(`"formatted[${index}]" names the replay itself, not a Short`));
    }
    findings.push(...found);
  }
  return findings;
}

function triggers(event) {
  if (!("triggers" in event)) {
    return [warning(`"triggers" lacks "triggers": no clip is made`)];
  }
  const nobody = listOf(event.triggers).some((each) => each?.by === "");
  return nobody ? [warning(`"by" is empty: the dock shows "Clipped from chat by @."`)] : [];
}

function complaintsAboutVersion({ latest }) {
  return typeof latest === "string" && latest !== latest.trim()
    ? [error(`"latest" has spaces around it, but must later equal the installed version: ${JSON.stringify(latest)}`)]
    : [];
}

function update(event) {
  return event.update === true && !event.latest
    ? [error(`"latest" is empty: the dock offers "Update available v — Update now"`)]
    : complaintsAboutVersion(event);
}

function progress({ phase }) {
  return typeof phase === "string" && phase !== "download"
    ? [warning(`"phase" of "progress" is "${phase}"; the dock shows "download" only`)]
    : [];
}

async function downloaded(event) {
  return [...(await complaintsAboutFile(`"path" of "downloaded"`, event.path)), ...complaintsAboutVersion(event)];
}

function code(event) {
  return event.code === ""
    ? [warning(`"code" is empty: the dock shows "Finish in your browser (code ). Waiting…"`)]
    : [];
}

function failure(event) {
  return event.error === "" ? [error(`"error" of "error" is empty: the user reads no reason`)] : [];
}

const checks = { status, code, recent, preview, chat, done, triggers, update, progress, downloaded, error: failure };

/** The promises that an event breaks, as findings. `replay` is the video that the helper was given. */
export async function brokenPromises(event, { replay }) {
  return [...((await checks[event.event]?.(event, { replay })) ?? []), ...complaintsAboutMarkup(event)];
}
