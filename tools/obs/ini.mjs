// OBS's INI files.

/** From an object of sections, each an object of keys. */
export function formatIni(sections) {
  const lines = Object.entries(sections).flatMap(([section, values]) => [
    `[${section}]`,
    ...Object.entries(values).map(([key, value]) => `${key}=${value}`),
    "",
  ]);
  return lines.join("\n");
}

/** The reverse; all values are strings. */
export function parseIni(text) {
  const sections = {};
  let current = {};
  for (const line of text.replace(/^\uFEFF/, "").split(/\r?\n/)) {
    const section = /^\[(.*)\]$/.exec(line);
    const value = /^([^=]+)=(.*)$/.exec(line);
    if (section) {
      current = sections[section[1]] ??= {};
    } else if (value) {
      current[value[1]] = value[2];
    }
  }
  return sections;
}
