// Tags in texts that the dock may read as markup.

import { error, quoted, warning } from "./findings.mjs";

// Members that the status line, the account label, tooltips and the like show; the chat section escapes its own.
const ownTexts = {
  error: ["error"],
  code: ["code"],
  done: ["note"],
  update: ["latest", "notes"],
  downloaded: ["latest"],
};

function holdsTag(text) {
  return typeof text === "string" && /<[A-Za-z/!?]/.test(text);
}

/** Texts with a tag in them: names that others have chosen are errors, the helper's own words may mean it. */
export function complaintsAboutMarkup(event) {
  const names = [event.login, ...(Array.isArray(event.triggers) ? event.triggers.map((each) => each?.by) : [])];
  const advice = `remove "<" from what other people wrote`;
  return [
    ...names
      .filter(holdsTag)
      .map((name) => error(`a name contains a tag, which the dock may read as markup; ${advice}: ${quoted(name)}`)),
    ...(ownTexts[event.event] ?? [])
      .filter((member) => holdsTag(event[member]))
      .map((member) =>
        warning(`"${member}" of "${event.event}" contains a tag, which the dock may read as markup; ${advice}`),
      ),
  ];
}
