// An error breaks the protocol; a warning works, but the user sees something odd.

export function error(text) {
  return { severity: "error", text };
}

export function warning(text) {
  return { severity: "warning", text };
}
