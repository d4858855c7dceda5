// Positions and sizes on a display on which Qt draws larger than at 100 %.

/** `area`, an object of positions and sizes as they would be at 100 %, in the display's own pixels. */
export function scaled(area, scale) {
  return Object.fromEntries(Object.entries(area).map(([member, value]) => [member, Math.round(value * scale)]));
}
