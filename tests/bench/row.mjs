// Rows of the table that ./run bench prints.

/** Prints a row. `goal` says what the figure should be; it may be left out, as may `beside`. */
export function row(what, measured, beside = "", goal = "") {
  console.log(`| ${what} | ${measured} | ${beside} | ${goal} |`);
}

export function number(value, digits = 1) {
  return value.toFixed(digits);
}

/** The smallest of the values that is not less than `share` of them. */
export function percentile(values, share) {
  return values.toSorted((a, b) => a - b)[Math.max(0, Math.ceil(values.length * share) - 1)];
}

export function median(values) {
  return percentile(values, 0.5);
}

/** The median, and how far the middle half of the values spreads. */
export function spread(values, unit, digits = 1) {
  const [low, middle, high] = [0.25, 0.5, 0.75].map((share) => number(percentile(values, share), digits));
  return `${middle} ${unit} (${low} to ${high})`;
}
