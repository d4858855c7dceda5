// The dock's commands, and what a missing answer costs the user.

import { noCaptions } from "./choices.mjs";

function look({ layouts, styles, fonts }, style = styles[0]) {
  return ["--layout", layouts[0], "--style", style, "--font", fonts[0]];
}

function processRounds({ choices, replay }) {
  const start = ["--process", replay, "--seconds"];
  return [
    [[...start, "30", "--scene", "obs", ...look(choices), "--caption-position", "auto"]],
    [
      [...start, "60", "--scene", "obs", ...look(choices, noCaptions)],
      // Empty choices are left out.
      [...start, "120", "--scene", "obs", "--caption-position", "bottom"],
    ],
  ];
}

function previewRounds({ choices }) {
  const preview = (style, position) => ["--preview", ...look(choices, style), "--caption-position", position];
  return [[preview(undefined, "auto")], [preview(noCaptions, "auto"), preview(undefined, "top")]];
}

function aloneAndTwice(command) {
  return () => [[[command]], [[command], [command]]];
}

const shortLimit_ms = 60_000;
const longLimit_ms = 300_000;

/** A command that later versions of the dock may send. */
export const futureCommand = "--future-command";

/**
 * By command: `rounds` makes the argument lists (those of a round are run at the same time); `answers` are the events
 * of which one must come; `without` is what the user gets when none does; `optional` tells whether this helper may leave
 * the command out; `changes` is set when running it changes more than the helper's own files; `advice` (optional)
 * is added to what goes wrong.
 */
export const commands = {
  "--status": {
    rounds: aloneAndTwice("--status"),
    answers: ["status"],
    without: `the dock goes on showing "Starting…", and no clip can be made`,
    optional: () => false,
    limit_ms: shortLimit_ms,
  },
  "--link": {
    rounds: () => [[["--link", "--no-browser"]]],
    answers: ["linked", "error"],
    without: "the user never reads how it ended",
    optional: ({ linked }) => linked,
    changes: "links this computer to an account",
    limit_ms: longLimit_ms,
  },
  "--recent": {
    rounds: aloneAndTwice("--recent"),
    answers: ["recent"],
    without: `the list of recent clips stays as it was, and "Open output folder" does nothing`,
    optional: () => true,
    limit_ms: shortLimit_ms,
  },
  "--preview": {
    rounds: previewRounds,
    answers: ["preview"],
    without: "no preview is shown",
    optional: () => true,
    limit_ms: shortLimit_ms,
  },
  "--chat-get": {
    rounds: aloneAndTwice("--chat-get"),
    answers: ["chat"],
    without: "the chat section never shows the settings",
    optional: () => true,
    limit_ms: shortLimit_ms,
  },
  "--chat-set": {
    answers: ["chat"],
    without: `the chat section goes on showing "Saving…"`,
    optional: () => false,
    changes: "changes the chat settings for a moment",
    limit_ms: shortLimit_ms,
  },
  "--poll-triggers": {
    rounds: () => [[["--poll-triggers"]], [["--poll-triggers"]]],
    answers: ["triggers"],
    without: "the chat command makes no clip",
    optional: () => true,
    limit_ms: shortLimit_ms,
  },
  "--check-update": {
    rounds: aloneAndTwice("--check-update"),
    answers: ["update"],
    without: "no update is ever offered",
    optional: () => true,
    limit_ms: shortLimit_ms,
  },
  "--download-update": {
    rounds: () => [[["--download-update"]]],
    answers: ["downloaded", "update", "error"],
    without: `the dock shows "Update failed: the helper stopped (code …). Retry update"`,
    optional: ({ offersUpdate }) => !offersUpdate,
    changes: "downloads an installer (which is not run)",
    limit_ms: longLimit_ms,
  },
  "--process": {
    rounds: processRounds,
    answers: ["done", "pending", "error"],
    without: `the dock goes on showing "Clip saved. Making your Short (about 1–3 min)…"`,
    optional: () => false,
    limit_ms: longLimit_ms,
  },
  [futureCommand]: {
    rounds: () => [[[futureCommand]]],
    answers: [],
    advice: `end a command that you do not know with code 0, without an event or with "error"`,
    limit_ms: shortLimit_ms,
  },
};
