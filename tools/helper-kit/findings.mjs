// What a check has to say. `text` names the cause, `effect` (optional) what the user gets because of it.

/** It is against the protocol. */
export function error(text, effect) {
  return { severity: "error", text, effect };
}

/** It works, but look at what the user gets. */
export function warning(text, effect) {
  return { severity: "warning", text, effect };
}

/** The helper does without a command that it may do without. */
export function leftOut(text) {
  return { severity: "left out", text };
}

export function isError({ severity }) {
  return severity === "error";
}

// Nobody reads more of a line, and it is as long as the dock's own limit.
const maxQuotation = 4000;

/** A quotation from the helper, whole unless it is very long. */
export function quoted(text) {
  return text.length <= maxQuotation ? text : `${text.slice(0, maxQuotation)}… (${text.length} characters in all)`;
}
