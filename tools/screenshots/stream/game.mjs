// A game that does not exist: somebody runs through the hills at dusk. Drawn for 1920x1080; times are in seconds.

import { drawDisplays } from "./game-displays.mjs";
import { box, downwards, ellipse, glow, noise, polygon, stroke } from "./shapes.mjs";

const width = 1920;
const height = 1080;
const groundTop = 850;
const runnerX = 900;
/** Pixels per second. */
const speed = 420;

function drawSky(context, time) {
  context.fillStyle = downwards(context, 0, groundTop, ["#140c3a", "#3d1f74", "#a63d84", "#f2766b", "#ffc27a"]);
  context.fillRect(0, 0, width, height);
  for (let star = 0; star < 70; star += 1) {
    const twinkle = 0.35 + 0.3 * Math.sin(time * 2 + star);
    const y = noise(star + 500) * 380;
    ellipse(context, noise(star) * width, y, 2, 2, `rgba(255,255,255,${twinkle})`);
  }
  glow(context, 1180, 560, 420, "255,225,160", 0.75);
  ellipse(context, 1180, 560, 105, 105, "#ffe9b8");
}

/** A row of hills; the far ones move slower. */
function drawHills(context, offset, { top, rise, length, colours }) {
  const points = [0, height];
  for (let x = 0; x <= width; x += 12) {
    const place = (x + offset) / length;
    points.push(x, top - rise * (Math.abs(Math.sin(place)) + 0.35 * Math.sin(place * 2.7 + 1)));
  }
  polygon(context, [...points, width, height], downwards(context, top - rise * 1.3, groundTop, colours));
}

/** Calls `draw` with the place and the number of each thing that is in the picture; things are `distance` apart. */
function along(offset, distance, draw) {
  const first = Math.floor((offset - 300) / distance);
  for (let index = first; index * distance < offset + width + 300; index += 1) {
    draw(index * distance - offset, index);
  }
}

function drawTree(context, x, index) {
  const size = 190 + 130 * noise(index);
  const shift = x + 60 * noise(index + 40);
  for (let layer = 0; layer < 4; layer += 1) {
    const top = groundTop - size + layer * size * 0.2;
    const half = size * (0.1 + 0.065 * layer);
    polygon(
      context,
      [shift, top, shift + half, top + size * 0.36, shift - half, top + size * 0.36],
      `rgb(${30 + 6 * layer}, ${26 + 12 * layer}, ${66 + 8 * layer})`,
    );
  }
}

function drawGround(context, offset) {
  context.fillStyle = downwards(context, groundTop, height, ["#3a2a55", "#1b1233"]);
  context.fillRect(0, groundTop, width, height - groundTop);
  along(offset, 96, (x, index) => {
    box(
      context,
      x + 6,
      groundTop + 50 + 70 * noise(index),
      44 + 30 * noise(index + 9),
      20,
      8,
      "rgba(255,255,255,0.06)",
    );
  });
  context.fillStyle = downwards(context, groundTop - 8, groundTop + 34, ["#7be495", "#2f9c7a"]);
  context.fillRect(0, groundTop - 8, width, 34);
  along(offset, 26, (x, index) => {
    const tip = groundTop - 18 - 16 * noise(index);
    const blade = [x, groundTop, x + 9 * noise(index + 3), tip, x + 13, groundTop];
    polygon(context, blade, "#5fd38a");
  });
}

function drawCoin(context, x, y, time) {
  const turn = Math.abs(Math.cos(time * 4 + x / 90));
  glow(context, x, y, 44, "255,220,110", 0.45);
  ellipse(context, x, y, 6 + 16 * turn, 22, "#ffcf4a");
  ellipse(context, x, y, 2 + 9 * turn, 14, "#ffe9a3");
}

function drawPlatform(context, x, index, time) {
  const y = 640 - 150 * noise(index + 70);
  box(context, x, y, 260, 44, 16, "#4b3570");
  box(context, x, y, 260, 20, 10, "#6fdc92");
  for (let coin = 0; coin < 3; coin += 1) {
    drawCoin(context, x + 60 + coin * 70, y - 52 - 6 * Math.sin(time * 3 + coin), time);
  }
}

function drawSlime(context, x, index, time) {
  const squeeze = 8 * Math.sin(time * 5 + index);
  ellipse(context, x, groundTop - 2, 66, 12, "rgba(0,0,0,0.3)");
  ellipse(context, x, groundTop - 40, 60 - squeeze, 46 + squeeze, "#e8457f");
  ellipse(context, x - 18, groundTop - 62, 20, 10, "rgba(255,255,255,0.35)");
  for (const side of [-24, 12]) {
    ellipse(context, x + side, groundTop - 46, 12, 15, "white");
    ellipse(context, x + side - 4, groundTop - 44, 6, 8, "#24123f");
  }
}

/** How high above the ground the runner is: a leap every two seconds. */
function leap(time) {
  const phase = (time % 2) / 0.9;
  return phase < 1 ? 260 * 4 * phase * (1 - phase) : 0;
}

function drawScarf(context, x, y, time) {
  const points = [];
  for (let part = 0; part < 9; part += 1) {
    points.push(x - part * 20, y + part * 4 + Math.sin(time * 9 - part * 0.8) * part * 2.6);
  }
  stroke(context, points, 17, "#ff4d6d");
}

function drawRunner(context, time) {
  const y = groundTop - leap(time);
  const stride = Math.sin(time * 13);
  ellipse(context, runnerX, groundTop + 2, 58, 11, "rgba(0,0,0,0.35)");
  glow(context, runnerX, y - 90, 170, "120,230,255", 0.35);
  drawScarf(context, runnerX - 12, y - 128, time);
  for (const side of [-1, 1]) {
    const swing = side * stride * 34;
    stroke(context, [runnerX, y - 62, runnerX + swing * 0.6, y - 32, runnerX + swing, y - 4], 20, "#1d2b57");
    stroke(context, [runnerX, y - 116, runnerX - swing * 0.9, y - 82], 16, "#ffd2ad");
  }
  box(context, runnerX - 28, y - 132, 56, 80, 22, "#23c4ed");
  ellipse(context, runnerX + 6, y - 160, 38, 38, "#ffd2ad");
  ellipse(context, runnerX - 2, y - 172, 40, 30, "#5b2c83");
  polygon(context, [runnerX - 38, y - 178, runnerX - 66, y - 196, runnerX - 22, y - 196], "#5b2c83");
  ellipse(context, runnerX + 26, y - 156, 6, 9, "#24123f");
  stroke(context, [runnerX + 44, y - 92, runnerX + 122, y - 138], 9, "#dff6ff");
  stroke(context, [runnerX + 34, y - 106, runnerX + 52, y - 76], 9, "#ffcf4a");
}

function drawSparks(context, time) {
  for (let spark = 0; spark < 26; spark += 1) {
    const age = (time * 1.4 + noise(spark)) % 1;
    const x = runnerX - 40 - age * 330;
    const y = groundTop - leap(time) - 60 + (noise(spark + 30) - 0.5) * 190 * age;
    ellipse(context, x, y, 7 * (1 - age), 7 * (1 - age), `rgba(150,240,255,${0.8 * (1 - age)})`);
  }
}

/** Draws the game at this time over the whole picture. */
export function drawGame(context, time) {
  const offset = time * speed;
  drawSky(context, time);
  drawHills(context, offset * 0.08, { top: 700, rise: 230, length: 300, colours: ["#5a2f86", "#b4508a"] });
  drawHills(context, offset * 0.2 + 900, { top: 780, rise: 170, length: 210, colours: ["#3a2168", "#6f3a80"] });
  along(offset * 0.5, 150, (x, index) => drawTree(context, x, index));
  along(offset, 620, (x, index) => drawPlatform(context, x, index, time));
  drawGround(context, offset);
  along(offset, 980, (x, index) => drawSlime(context, x + 330, index, time));
  drawSparks(context, time);
  drawRunner(context, time);
  drawDisplays(context, time);
}
