// Whether the system can start the helper at all, and if not, why.

import { accessSync, constants, existsSync, openSync, readSync, closeSync } from "node:fs";
import path from "node:path";
import { error } from "./findings.mjs";

const effect = `The user reads "Couldn't start the Kestrune helper (blocked by antivirus?). Reinstall from …/addons".`;

/** Undefined for a program that may be run but not read. */
function beginningOf(file) {
  try {
    const handle = openSync(file);
    const buffer = Buffer.alloc(256);
    const length = readSync(handle, buffer, 0, buffer.length, 0);
    closeSync(handle);
    return buffer.toString("latin1", 0, length);
  } catch {
    return undefined;
  }
}

function isInPath(program) {
  return (process.env.PATH ?? "").split(path.delimiter).some((folder) => existsSync(path.join(folder, program)));
}

/** What is wrong with the line "#!…" of a script. */
function slipOfFirstLine(line) {
  if (line.endsWith("\r")) {
    return "its #! line ends with a carriage return: save the file with Unix line ends";
  }
  const [interpreter, argument] = line.slice(2).trim().split(/\s+/);
  if (!existsSync(interpreter)) {
    return `its #! line names a program that does not exist: ${interpreter}`;
  }
  const named = path.basename(interpreter) === "env" && argument && !argument.startsWith("-") ? argument : undefined;
  return named && !isInPath(named) ? `its #! line names a program that is not in the PATH: ${named}` : undefined;
}

function slipOf(program) {
  const beginning = beginningOf(program);
  if (beginning === undefined) {
    return undefined;
  }
  if (beginning.startsWith("MZ")) {
    return "it is a program for Windows";
  }
  if (beginning.startsWith("\xef\xbb\xbf#!")) {
    return "there is a byte order mark before its #! line: save the file without one";
  }
  if (beginning.startsWith("#!")) {
    return slipOfFirstLine(beginning.split("\n", 1)[0]);
  }
  if (/^[\t\n\r\x20-\x7e\x80-\xff]*$/.test(beginning)) {
    return "it is a script without a #! line, such as #!/usr/bin/env python3";
  }
  // Without this, the shell would be tried on it.
  // eslint-disable-next-line no-control-regex
  const isLinuxProgram = /^\x7fELF[\x01\x02]/.test(beginning);
  return process.platform === "linux" && !isLinuxProgram
    ? "it is not a program for Linux, or it is damaged"
    : undefined;
}

/** What keeps the system from starting `program`: a list with one finding or none. */
export function complaintsAboutProgram(program) {
  if (process.platform === "win32") {
    return [];
  }
  try {
    accessSync(program, constants.X_OK);
  } catch {
    return [error(`the program is not executable: chmod +x ${program}`, effect)];
  }
  const slip = slipOf(program);
  return slip ? [error(`the program cannot be started: ${slip}`, effect)] : [];
}

/** The same, after the system has refused to start it. */
export function refusedStart({ code }) {
  return error(`the program cannot be started (${code})`, effect);
}
