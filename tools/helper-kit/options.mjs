// The command line of tools/check-helper.

import { accessSync, constants, statSync } from "node:fs";
import path from "node:path";
import { parseArgs } from "node:util";
import { commands } from "./commands.mjs";

export const usage = `tools/check-helper PROGRAM [OPTION...]

Runs PROGRAM, a Kestrune helper, through the helper protocol as the dock does, and says what it does wrong.

  --all             also run what changes more than the helper's own files: --link, --chat-set (the settings are put
                    back), --download-update (nothing is installed), and --process when an account is linked (the
                    Short may be uploaded)
  --only COMMAND    run this command alone, for example --only process; may be given several times
  --replay FILE     make Shorts of a copy of this video instead of a test video made with ffmpeg
  --timeout S       kill a run after this many seconds (default 300)
  --help            print this text

--poll-triggers takes the uses of the chat command that are waiting. Shorts that are made stay where the helper puts
them. Exit code: 0 without errors (warnings or not), 1 with errors, 2 when the command line is wrong.
`;

/** The message says what is wrong. */
export class UsageError extends Error {}

function commandNamed(name) {
  const command = `--${name.replace(/^--/, "")}`;
  if (!(command in commands)) {
    throw new UsageError(`there is no command ${command}; there are: ${Object.keys(commands).join(" ")}`);
  }
  return command;
}

function existingFile(name, what) {
  const file = path.resolve(name);
  if (!statSync(file, { throwIfNoEntry: false })?.isFile()) {
    throw new UsageError(`${what} ${name} is not there`);
  }
  return file;
}

function programNamed(name) {
  const program = existingFile(name, "the program");
  try {
    accessSync(program, constants.X_OK);
  } catch {
    throw new UsageError(`${name} is no program: it may not be executed`);
  }
  return program;
}

function parse(args) {
  try {
    return parseArgs({
      args,
      allowPositionals: true,
      options: {
        all: { type: "boolean", default: false },
        only: { type: "string", multiple: true, default: [] },
        replay: { type: "string" },
        timeout: { type: "string", default: "300" },
        help: { type: "boolean", default: false },
      },
    });
  } catch (error) {
    throw new UsageError(error.message);
  }
}

/** Throws UsageError. With `help`, nothing else is set. */
export function readOptions(args) {
  const { values, positionals } = parse(args);
  if (values.help) {
    return { help: true };
  }
  if (positionals.length !== 1) {
    throw new UsageError("name one program to check");
  }
  const timeout_s = Number(values.timeout);
  if (!(timeout_s > 0)) {
    throw new UsageError("--timeout needs a number of seconds");
  }
  return {
    program: programNamed(positionals[0]),
    all: values.all,
    only: values.only.map(commandNamed),
    replay: values.replay === undefined ? undefined : existingFile(values.replay, "the replay"),
    limitMs: timeout_s * 1000,
  };
}
