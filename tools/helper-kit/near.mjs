// "Did you mean": the known name that a misspelt one is most like.

/** Edits (insert, remove, replace, swap two neighbours) that lead from `a` to `b`. */
function distance(a, b) {
  const rows = [[...Array(b.length + 1).keys()]];
  for (let i = 1; i <= a.length; i += 1) {
    rows[i] = [i];
    for (let j = 1; j <= b.length; j += 1) {
      const replaced = rows[i - 1][j - 1] + (a[i - 1] === b[j - 1] ? 0 : 1);
      rows[i][j] = Math.min(rows[i - 1][j] + 1, rows[i][j - 1] + 1, replaced);
      if (i > 1 && j > 1 && a[i - 1] === b[j - 2] && a[i - 2] === b[j - 1]) {
        rows[i][j] = Math.min(rows[i][j], rows[i - 2][j - 2] + 1);
      }
    }
  }
  return rows[a.length][b.length];
}

function plain(name) {
  return name.toLowerCase().replace(/[\s_-]/g, "");
}

/** How unlike the names are; undefined when nobody takes one for the other. */
function unlikeness(name, known) {
  const [a, b] = [plain(name), plain(known)];
  const edits = distance(a, b);
  if (edits <= Math.max(1, Math.floor(b.length / 3))) {
    return edits;
  }
  // A part of it: login_name, consent.
  const [short, long] = a.length < b.length ? [a, b] : [b, a];
  const isPart = short.length >= 4 ? long.includes(short) : short.length === 3 && long.startsWith(short);
  return isPart ? long.length : undefined;
}

/** The one of `known` that `name` is most likely meant to be, the first of several; or undefined. */
export function nearest(name, known) {
  const candidates = known
    .map((each) => ({ each, rank: unlikeness(name, each) }))
    .filter(({ rank }) => rank !== undefined)
    .sort((a, b) => a.rank - b.rank);
  return candidates[0]?.each;
}
