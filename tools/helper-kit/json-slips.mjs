// What is wrong with a line that should be JSON, in plain words.

/** How far the object at the start of `text` goes: `end`, undefined when it is not closed; then `inText` says where. */
function extentOfObject(text) {
  let depth = 0;
  let inText = false;
  for (let i = 0; i < text.length; i += 1) {
    const character = text[i];
    if (inText && character === "\\") {
      i += 1;
    } else if (character === '"') {
      inText = !inText;
    } else if (!inText && character === "{") {
      depth += 1;
    } else if (!inText && character === "}") {
      depth -= 1;
      if (depth === 0) {
        return { end: i + 1 };
      }
    }
  }
  return { inText };
}

function isJson(text) {
  try {
    JSON.parse(text);
    return true;
  } catch {
    return false;
  }
}

function slipAfterObject(rest) {
  if (/^,?\s*\{/.test(rest)) {
    return "there are several objects on one line; write each on its own line";
  }
  if (/^(\\r)?\\n$/.test(rest)) {
    return "a line ends with a backslash and an n instead of a newline";
  }
  return `an object is followed by ${JSON.stringify(rest)} on its line`;
}

/** Slips that show in the text itself, the most telling first. */
const slips = [
  [/[{,:]\s*[“”„‘’]/, "it has curly quotes, but JSON needs straight ones"],
  [/^\{\s*\\"/, "its quotes are escaped with backslashes; write the object itself"],
  [/^\{\s*'/, "it uses single quotes, but JSON needs double quotes (Python: json.dumps)"],
  [/[:[,]\s*(True|False|None)\b/, "True, False and None are Python's; JSON has true, false and null (json.dumps)"],
  [/[:[,]\s*-?(NaN|Infinity)\b/, "JSON has no NaN and no Infinity"],
  [/[:[,]\s*undefined\b/, "JSON has no undefined"],
  [/,\s*[}\]]/, "there is a comma before a closing bracket"],
  [/[{,]\s*[A-Za-z_]\w*\s*:/, "member names lack their double quotes"],
  [/\\[^"\\/bfnrtu]/, "a backslash in a string must be doubled: C:\\\\Shorts (or write C:/Shorts)"],
  // eslint-disable-next-line no-control-regex
  [/[\x00-\x1f]/, "a string contains a raw tab or another control character; write \\t, \\n or \\u00xx"],
];

/** Why this line is not JSON. */
export function slipOf(text) {
  const { end, inText } = extentOfObject(text);
  if (end !== undefined && isJson(text.slice(0, end))) {
    return slipAfterObject(text.slice(end).trim());
  }
  const shown = slips.find(([pattern]) => pattern.test(text));
  if (shown) {
    return shown[1];
  }
  if (inText) {
    return "a string is not closed on its line; write a line break in it as \\n";
  }
  return end === undefined ? "the object is not closed on its line" : "it breaks JSON's syntax";
}

/** The text before an event on its line, such as a time or "data: "; undefined if there is no event. */
export function textBeforeEvent(text) {
  const start = text.search(/\{\s*"event"/);
  const event = text.slice(start);
  return start > 0 && isJson(event.slice(0, extentOfObject(event).end)) ? text.slice(0, start) : undefined;
}

/** How many of `lines`, from `first` on, make one text of JSON together; undefined if they do not. */
export function linesOfOneText(lines, first) {
  let joined = lines[first];
  for (let next = first + 1; next < lines.length; next += 1) {
    joined += `\n${lines[next]}`;
    if (/[}\]]$/.test(lines[next]) && isJson(joined)) {
      return next + 1 - first;
    }
  }
  return undefined;
}
