/** Converts positions and sizes at 100 % into pixels of a display where Qt draws larger. */
export function scaled(area, scale) {
  return Object.fromEntries(Object.entries(area).map(([member, value]) => [member, Math.round(value * scale)]));
}
