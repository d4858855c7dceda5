// Helpers whose output cannot be read as the protocol wants it. [what it does, its bash lines, what the report says first]

const right = `{"event":"recent","folder":"/"}`;
const notJson = "a line is not JSON:";

/** All of these are asked for --recent, and all are errors. */
export const brokenOutput = [
  ["says nothing but an empty line", "echo", `no "recent" event came`],
  [
    "puts a comma before a bracket",
    `echo '{"event":"recent",}'`,
    `${notJson} there is a comma before a closing bracket`,
  ],
  [
    "prints a Python object",
    `echo "{'event': 'recent'}"`,
    `${notJson} it uses single quotes, but JSON needs double quotes`,
  ],
  ["writes typographic quotes", `echo '{“event”:“recent”}'`, `${notJson} it has curly quotes`],
  [
    "writes Python's words",
    `echo '{"event": "recent", "items": None}'`,
    `${notJson} True, False and None are Python's`,
  ],
  ["writes NaN", `echo '{"event":"recent","n":NaN}'`, `${notJson} JSON has no NaN`],
  ["writes undefined", `echo '{"event":"recent","folder":undefined}'`, `${notJson} JSON has no undefined`],
  ["leaves out quotes", `echo '{event:"recent"}'`, `${notJson} member names lack their double quotes`],
  [
    "does not double backslashes",
    `printf '%s\\n' '{"event":"recent","folder":"C:\\Shorts"}'`,
    `${notJson} a backslash in a string must be doubled`,
  ],
  ["writes a raw tab", `printf '{"event":"recent","folder":"/\\t"}\\n'`, `${notJson} a string contains a raw tab`],
  ["breaks a text", `printf '{"event":"recent","folder":"/\\n"}\\n'`, `${notJson} a string is not closed on its line`],
  ["forgets a bracket", `echo '{"event":"recent","folder":"/"'`, `${notJson} the object is not closed on its line`],
  ["invents a syntax", `echo '{"event"="recent"}'`, `${notJson} it breaks JSON's syntax`],
  ["writes two on a line", `echo '${right}${right}'`, `${notJson} there are several objects on one line`],
  ["separates by commas", `echo '${right},'`, `${notJson} an object is followed by "," on its line`],
  [
    "writes a newline as two characters",
    `printf '%s\\n' '${right}\\n'`,
    `${notJson} a line ends with a backslash and an n instead of a newline`,
  ],
  ["logs its events", `echo '12:00 INFO ${right}'`, `there is text before the event on its line: "12:00 INFO "`],
  ["serves the web", `echo 'data: ${right}'`, `there is text before the event on its line: "data: "`],
  ["writes in colours", `printf '\\e[32m%s\\e[0m\\n' '${right}'`, "there is text before the event on its line:"],
  ["writes a list of events", `echo '[${right}]'`, "a line is a list; write each event on a line of its own"],
  ["writes a list", `echo '["a.mp4"]'`, `a line is JSON but not an object: ["a.mp4"]`],
  ["writes a word", `echo '"recent"'`, `a line is JSON but not an object: "recent"`],
  ["encodes twice", `printf '%s\\n' '"{\\"event\\":\\"recent\\"}"'`, "an event was encoded twice"],
  ["indents its JSON", `printf '{\\n  "event": "recent",\\n  "items": [\\n  ]\\n}\\n'`, "JSON goes over several lines"],
  [
    "indents its JSON, and forgets the last newline",
    `printf '{\\n  "event": "recent",\\n  "items": []\\n}'`,
    "JSON goes over several lines",
  ],
  ["writes UTF-16", `printf '\\xff\\xfe{\\0"\\0e\\0'`, "the output is UTF-16; write UTF-8"],
  ["writes UTF-16 without a mark", `printf '{\\0"\\0e\\0\\n\\0'`, "the output is UTF-16; write UTF-8"],
  ["writes Latin-1", `printf '{"event":"recent","folder":"/\\xe9"}\\n'`, "a line is not UTF-8"],
  ["ends lines as old Macs did", `printf '%s\\r' '${right}' '${right}'`, "lines end with a carriage return only"],
  [
    "escapes the quotes of its JSON",
    `echo '{\\"event\\":\\"recent\\"}'`,
    "a line is not JSON: its quotes are escaped with backslashes; write the object itself",
  ],
  ["ends one line as old Macs did", `printf '%s\\r' '${right}'`, "lines end with a carriage return only"],
  ["forgets the last newline", `printf '%s' '${right}'`, `the last line has no newline at its end`],
  [
    "writes a line without end",
    `printf '{"event":"recent","folder":"%s"}\\n' "$(head -c 9000000 /dev/zero | tr '\\0' x)"`,
    "a line has 9000030 bytes; 5 MiB are the most",
  ],
  [
    "prints its usage",
    "echo 'Usage: helper FILE'",
    "a line is not JSON; the dock drops it, log to a file instead: Usage:",
  ],
  [
    "writes to the error output",
    `echo '${right}' >&2`,
    `an event was written to standard error, which nobody reads: ${right}`,
  ],
  [
    "writes to the error output and fails",
    `echo '${right}' >&2; exit 1`,
    `an event was written to standard error, which nobody reads: ${right}`,
  ],
];
