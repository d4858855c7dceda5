// The command line of tools/check-helper.

import { statSync } from "node:fs";
import path from "node:path";
import { parseArgs } from "node:util";
import { commands, futureCommand } from "./commands.mjs";
import { nearest } from "./near.mjs";

export const usage = `check-helper PROGRAM [OPTION...]

Runs PROGRAM, a Kestrune helper, through the helper protocol as the dock does, and says what is wrong with it.

  --all             also run what changes more than the helper's own files: --link, --chat-set (the settings are put
                    back), --download-update (nothing is installed), and --process when an account is linked (the
                    Short may be uploaded)
  --only COMMAND    run this command alone, for example --only process; may be given several times
  --future-command  only see how it takes a command that it does not know (short for --only future-command)
  --replay FILE     make Shorts of a copy of this video instead of a test video made with ffmpeg
  --timeout S       end a run after this many seconds (default: 60; 300 for --link, --process and --download-update)
  --verbose         show every run: its arguments, its output, its error output and how it ended
  --help            print this text

--poll-triggers takes the uses of the chat command that are waiting. Shorts that are made stay where the helper puts
them. Exit code: 0 without errors (warnings or not), 1 with errors, 2 when the command line is wrong or a command that
should have been checked could not be.`;

/** The command line is wrong; the message says how. */
export class UsageError extends Error {}

const known = {
  all: { type: "boolean", default: false },
  only: { type: "string", multiple: true, default: [] },
  "future-command": { type: "boolean", default: false },
  replay: { type: "string" },
  timeout: { type: "string" },
  verbose: { type: "boolean", default: false },
  help: { type: "boolean", default: false },
};

function meantBy(name, names) {
  const meant = nearest(name, names);
  return meant ? `; did you mean ${meant}?` : "";
}

function commandNamed(name) {
  const command = `--${name.replace(/^--/, "")}`;
  const names = Object.keys(commands);
  if (!names.includes(command)) {
    throw new UsageError(`unknown command ${command}${meantBy(command, names) || `: ${names.join(" ")}`}`);
  }
  return command;
}

function existingFile(name, what) {
  const file = path.resolve(name);
  const found = statSync(file, { throwIfNoEntry: false });
  if (!found) {
    const isInRoot = process.env.KESTRUNE_ROOT_ID && !process.env.KESTRUNE_ROOT_ID.startsWith("machine");
    throw new UsageError(
      `${what} ${name} does not exist${isInRoot ? " in the build root, which contains only the checkout: leave out ./run shell" : ""}`,
    );
  }
  if (!found.isFile()) {
    throw new UsageError(`${what} ${name} is not a file`);
  }
  return file;
}

function parse(args) {
  try {
    return parseArgs({ args, allowPositionals: true, options: known });
  } catch ({ message }) {
    const [, unknown] = /^Unknown option '(-[^']*)'/.exec(message) ?? [];
    throw new UsageError(
      unknown
        ? `unknown option ${unknown}${meantBy(
            unknown,
            Object.keys(known).map((name) => `--${name}`),
          )}`
        : message.split(/\n|\. /)[0],
    );
  }
}

function secondsNamed(text) {
  const timeout_s = Number(text);
  if (!(timeout_s > 0)) {
    throw new UsageError(`--timeout needs a number of seconds, not "${text}"`);
  }
  return timeout_s;
}

/** Reads the arguments; throws UsageError. With `help` nothing else is set. */
export function readOptions(args) {
  const { values, positionals } = parse(args);
  if (values.help) {
    return { help: true };
  }
  if (positionals.length === 0) {
    throw new UsageError("name the program to check");
  }
  if (positionals.length > 1) {
    throw new UsageError(`name one program; the dock starts it without further arguments such as "${positionals[1]}"`);
  }
  return {
    program: existingFile(positionals[0], "the program"),
    all: values.all,
    only: [...values.only.map(commandNamed), ...(values["future-command"] ? [futureCommand] : [])],
    replay: values.replay === undefined ? undefined : existingFile(values.replay, "the replay"),
    limit_ms: values.timeout === undefined ? undefined : secondsNamed(values.timeout) * 1000,
    verbose: values.verbose,
  };
}
