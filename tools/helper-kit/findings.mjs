// What a check has to say: an error (against the protocol) or a warning (works, but see what the user gets).

export function error(text) {
  return { severity: "error", text };
}

export function warning(text) {
  return { severity: "warning", text };
}
