// soak-graph.mjs TABLE PICTURE: draws each column of a CSV table over time.

import { readFile, writeFile } from "node:fs/promises";

const [, , tablePath, picturePath] = process.argv;
const [header, ...rows] = (await readFile(tablePath, "utf8"))
  .trim()
  .split("\n")
  .map((line) => line.split(","));

const width = 720;
const height = 90;
const left = 150;

function graph(name, values, index) {
  const top = index * (height + 24) + 16;
  const highest = Math.max(...values, 1);
  const x = (i) => left + (i * (width - left - 16)) / Math.max(values.length - 1, 1);
  const y = (value) => top + height - (value / highest) * height;
  const points = values.map((value, i) => `${x(i).toFixed(1)},${y(value).toFixed(1)}`).join(" ");
  return [
    `<text x="8" y="${top + 14}">${name.replaceAll("_", " ")}</text>`,
    `<text x="8" y="${top + 34}" fill="#666">0 to ${highest}</text>`,
    `<text x="8" y="${top + 54}" fill="#666">last ${values.at(-1)}</text>`,
    `<path d="M${left} ${top}V${top + height}H${width - 16}" fill="none" stroke="#999"/>`,
    `<polyline points="${points}" fill="none" stroke="#2a7ab8" stroke-width="2"/>`,
  ].join("\n");
}

const graphs = header.map((name, column) =>
  graph(
    name,
    rows.map((row) => Number(row[column])),
    column,
  ),
);
const total = header.length * (height + 24) + 24;
await writeFile(
  picturePath,
  `<svg xmlns="http://www.w3.org/2000/svg" width="${width}" height="${total}" font-family="sans-serif" font-size="13">
<rect width="100%" height="100%" fill="white"/>
${graphs.join("\n")}
</svg>
`,
);
