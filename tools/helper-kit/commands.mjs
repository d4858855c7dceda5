// The dock's commands, and what a missing answer costs the user.

// The dock's own choices, until the helper names others.
const dockChoices = {
  layouts: ["vtuber-bubble", "vtuber", "facecam", "podcast", "gameplay"],
  styles: ["rune", "neon", "clean", "meme", "none"],
  fonts: ["bebas", "montserrat", "inter", "bangers"],
};
const noCaptions = "none";

/** The keys on offer after this `status` event (may be undefined), by member. */
export function offeredChoices(status) {
  const offered = {};
  for (const [member, keys] of Object.entries(dockChoices)) {
    const own = Array.isArray(status?.[member]) ? status[member].filter((key) => typeof key === "string") : [];
    offered[member] = status?.linked === true && own.length > 0 ? own : keys;
  }
  return offered;
}

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

/**
 * By command: `rounds` makes the argument lists, round by round; the runs of a round overlap. One of the events
 * `answers` must come, otherwise the user gets `without`. `changes` is set if the command changes more than the
 * helper's own files.
 */
export const commands = {
  "--status": {
    rounds: aloneAndTwice("--status"),
    answers: ["status"],
    without: `the dock goes on showing "Starting…", and no clip can be made`,
  },
  "--link": {
    rounds: () => [[["--link", "--no-browser"]]],
    answers: ["linked", "error"],
    without: "the user never reads how it ended",
    changes: "links this computer to an account",
  },
  "--recent": {
    rounds: aloneAndTwice("--recent"),
    answers: ["recent"],
    without: "the list of recent clips stays as it was",
  },
  "--preview": {
    rounds: previewRounds,
    answers: ["preview"],
    without: "no preview is shown",
  },
  "--chat-get": {
    rounds: aloneAndTwice("--chat-get"),
    answers: ["chat"],
    without: "the chat section never shows the settings",
  },
  "--chat-set": {
    answers: ["chat"],
    without: `the chat section goes on showing "Saving…"`,
    changes: "changes the chat settings for a moment",
  },
  "--poll-triggers": {
    rounds: () => [[["--poll-triggers"]]],
    answers: ["triggers"],
    without: "the chat command makes no clip",
  },
  "--check-update": {
    rounds: aloneAndTwice("--check-update"),
    answers: ["update"],
    without: "no update is offered",
  },
  "--download-update": {
    rounds: () => [[["--download-update"]]],
    answers: ["downloaded", "update", "error"],
    without: `the dock shows "Update failed: the helper stopped (code …). Retry update"`,
    changes: "downloads an installer (which is not run)",
  },
  "--process": {
    rounds: processRounds,
    answers: ["done", "pending", "error"],
    without: `the dock goes on showing "Clip saved. Making your Short (about 1–3 min)…"`,
  },
};
