// Helpers that start, run or end in a way that the dock cannot cope with.

const right = `echo '{"event":"recent","folder":"/"}'`;
const stopped = "it ended with exit code";

/** [what it does, command, its bash lines, what the report says first, options]: all errors. */
export const brokenRuns = [
  [
    "fails silently",
    "recent",
    "echo 'no database' >&2; exit 3",
    `${stopped} 3 without an event; its error output says: no database`,
  ],
  [
    "tells its failure in plain words",
    "recent",
    "echo 'Error: no database'; exit 3",
    `${stopped} 3 without an event; its output says: Error: no database`,
  ],
  [
    "is a Python program with a mistake in it",
    "recent",
    "exec python3 -c 'print(nothing)'",
    `${stopped} 1 without an event; its error output says: NameError: name 'nothing' is not defined`,
  ],
  [
    "is a Python program that lacks a module",
    "recent",
    "exec python3 -c 'import nowhere_to_be_found'",
    `${stopped} 1 without an event; its error output says: ModuleNotFoundError: No module named 'nowhere_to_be_found'`,
  ],
  [
    "is a Node.js program with a mistake in it",
    "recent",
    "exec node -e 'nothing()'",
    `${stopped} 1 without an event; its error output says: ReferenceError: nothing is not defined`,
  ],
  ["lacks a program", "recent", "set -e; no-such-program", `${stopped} 127 without an event; its error output says: `],
  ["looks for its files where it stands", "recent", "set -e; cat ./settings.json", `${stopped} 1 without an event; `],
  ["crashes", "recent", "kill -SEGV $$", "it crashed (SIGSEGV) without an event"],
  ["hangs", "recent", "exec sleep infinity", "it did not end within", ["--timeout", "1"]],
  ["hangs after its answer", "recent", `${right}; exec sleep infinity`, "it did not end within", ["--timeout", "1"]],
  ["waits for input", "recent", `cat >/dev/null; ${right}`, "it waits for standard input to end", ["--timeout", "1"]],
  ["forgets --status", "status", "true", `no "status" event came: the dock goes on showing "Starting…"`],
  ["forgets --process", "process", "true", `no "done" or "pending" or "error" event came: the dock goes on showing`],
  [
    "refuses the switches of --link",
    "link",
    "echo 'error: unrecognized arguments: --no-browser' >&2; exit 2",
    `${stopped} 2 without an event; its error output says: error: unrecognized arguments: --no-browser`,
  ],
  [
    "bears no company",
    "recent",
    `mkdir "$here/lock" || exit 1; sleep 1; rmdir "$here/lock"; ${right}`,
    "with two runs at the same time: it ended with exit code 1 without an event",
  ],
  ["prints without end", "recent", "exec yes", "it wrote too much and was killed"],
  ["fails at what it does not know", "future-command", "exit 3", `${stopped} 3 without an event (end a command`],
  [
    "hangs at what it does not know",
    "future-command",
    "exec sleep infinity",
    "it did not end within",
    ["--timeout", "1"],
  ],
  [
    "answers what it does not know",
    "future-command",
    `echo '{"event":"status"}'`,
    `"status" is not read after --future-command`,
  ],
  [
    "previews a poster",
    "preview",
    `printf '\\x89PNG\\r\\n\\x1a\\n\\0\\0\\0\\rIHDR\\0\\0\\x1f\\x40\\0\\0\\x1f\\x40' >"$here/a.png"
    echo '{"event":"preview","path":"'"$here"'/a.png"}'`,
    "the preview has 8000 x 8000 pixels; the dock hides pictures of more than twice 1080 x 1920",
  ],
  [
    "previews a film",
    "preview",
    `head -c 10000000 /dev/zero >"$here/a.png"; echo '{"event":"preview","path":"'"$here"'/a.png"}'`,
    "the preview has 10000000 bytes; the dock hides pictures of more than 9 MiB",
  ],
  ["changes the replay", "process", `echo x >>"$2"; echo '{"event":"pending"}'`, "the replay was changed"],
  ["removes the replay", "process", `rm -f "$2"; echo '{"event":"pending"}'`, "the replay was removed or moved"],
  [
    "makes the replay its Short",
    "process",
    `mv "$2" "$here/a.mkv"; echo '{"event":"done","formatted":["'"$here"'/a.mkv"]}'`,
    "the replay was removed or moved",
  ],
  [
    "removes its working folder",
    "recent",
    `rmdir "$PWD"; ${right}`,
    "it removed its working folder, which is OBS's own",
  ],
  [
    "previews a pipe",
    "preview",
    `mkfifo "$here/a.png"; echo '{"event":"preview","path":"'"$here"'/a.png"}'`,
    `"path" of "preview" names something that is not a regular file:`,
  ],
  [
    "uses one file for all Shorts",
    "process",
    `cp "$2" "$here/a.mp4"; echo '{"event":"done","formatted":["'"$here"'/a.mp4"]}'`,
    "two clips ended in the same file",
  ],
];

/** The same as warnings. */
export const oddRuns = [
  ["crashes after its answer", "recent", `${right}; kill -SEGV $$`, "it crashed (SIGSEGV) after its answer"],
  ["fails after its answer", "recent", `${right}; exit 1`, "it ended with exit code 1 after its answer"],
  [
    "writes where it stands",
    "recent",
    `echo x >recent.log; ${right}`,
    "it wrote into its working folder, which is OBS's",
  ],
  [
    "credits an empty name",
    "poll-triggers",
    `[[ -e $here/told ]] || use='{"by":""}'; : >"$here/told"; echo '{"event":"triggers","triggers":['"$use"']}'`,
    `"by" is empty: the dock shows "Clipped from chat by @."`,
  ],
  ["prints in between", "recent", `echo working; ${right}`, "a line is not JSON; the dock drops it, log to a file"],
  [
    "does not flush",
    "download-update",
    `sleep 1.2; printf '{"event":"progress","phase":"download","percent":5}\\n{"event":"update","update":false}\\n'`,
    "all 2 events came at once, at the end of a run of",
  ],
  [
    "talks too much",
    "chat-get",
    `printf '{"event":"chat","command":"!a","error":"%05000d"}\\n' 0`,
    `"error" of "chat" has 5000 characters; the dock cuts it after 4000`,
  ],
];

/** Programs that cannot be started: [what it is, its bytes, its mode, what the report says first]. */
export const brokenPrograms = [
  ["may not be executed", "#!/bin/sh\n", 0o644, "the program is not executable: chmod +x "],
  ["has no first line", "import json\n", 0o755, "the program cannot be started: it is a script without a #! line"],
  ["is empty", "", 0o755, "the program cannot be started: it is a script without a #! line"],
  [
    "has Windows line ends",
    "#!/bin/sh\r\necho\r\n",
    0o755,
    "the program cannot be started: its #! line ends with a carriage return",
  ],
  [
    "names an interpreter that does not exist",
    "#!/usr/bin/pyhton3\n",
    0o755,
    "the program cannot be started: its #! line names a program that does not exist: /usr/bin/pyhton3",
  ],
  [
    "names a program that env does not find",
    "#!/usr/bin/env pyhton3\n",
    0o755,
    "the program cannot be started: its #! line names a program that is not in the PATH: pyhton3",
  ],
  [
    "begins with a byte order mark",
    "\ufeff#!/bin/sh\n",
    0o755,
    "the program cannot be started: there is a byte order mark before its #! line",
  ],
  ["is for Windows", "MZ\x90\0\x03", 0o755, "the program cannot be started: it is a program for Windows"],
  [
    "is damaged",
    "\x7fELF, or so it seems",
    0o755,
    "the program cannot be started: it is not a program for Linux, or it is damaged",
  ],
];
