// What the game shows about itself: hearts, score, coins, a map and abilities.

import { box, ellipse, polygon, stroke } from "./shapes.mjs";

const panel = "rgba(16,10,44,0.66)";

function write(context, text, x, y, size, colour = "white") {
  context.font = `${size}px "Bebas Neue"`;
  context.fillStyle = colour;
  context.fillText(text, x, y);
}

function drawHeart(context, x, y, colour) {
  ellipse(context, x - 11, y - 7, 13, 13, colour);
  ellipse(context, x + 11, y - 7, 13, 13, colour);
  polygon(context, [x - 23, y - 1, x + 23, y - 1, x, y + 27], colour);
}

function drawScore(context, time) {
  box(context, 36, 32, 440, 168, 26, panel);
  for (let heart = 0; heart < 5; heart += 1) {
    drawHeart(context, 86 + heart * 62, 76, heart < 1 ? "#ff4d6d" : "#4d4673");
  }
  write(context, "Score", 62, 170, 44, "#a9b4e8");
  write(context, (12480 + Math.floor(time * 10) * 10).toLocaleString("en-US"), 152, 172, 60);
  ellipse(context, 338, 152, 19, 22, "#ffcf4a");
  write(context, `x ${37 + Math.floor(time)}`, 368, 170, 48, "#ffe9a3");
}

function drawMap(context, time) {
  const [x, y] = [1560, 32];
  box(context, x, y, 324, 212, 26, panel);
  const path = [24, 160, 70, 140, 108, 152, 150, 100, 196, 112, 240, 66, 298, 52];
  stroke(
    context,
    path.map((part, index) => part + (index % 2 === 0 ? x : y)),
    10,
    "#6fdc92",
  );
  ellipse(context, x + 108, y + 118, 9, 9, "#e8457f");
  ellipse(context, x + 206, y + 78, 9, 9, "#e8457f");
  ellipse(context, x + 262, y + 104, 9, 9, "#e8457f");
  ellipse(context, x + 150, y + 100, 15 + 3 * Math.sin(time * 6), 15 + 3 * Math.sin(time * 6), "white");
  ellipse(context, x + 150, y + 100, 9, 9, "#23c4ed");
  write(context, "Dusk Hills 3-2", x + 24, y + 48, 36, "#a9b4e8");
}

function drawAbilities(context, time) {
  ["#23c4ed", "#ffcf4a", "#e8457f"].forEach((colour, index) => {
    const x = 44 + index * 122;
    box(context, x, 944, 104, 104, 24, panel);
    ellipse(context, x + 52, 996, 30, 30, colour);
    const filled = (time * 0.4 + index * 0.37) % 1;
    box(context, x + 14, 1030, 76 * filled, 8, 4, "white");
  });
}

export function drawDisplays(context, time) {
  drawScore(context, time);
  drawMap(context, time);
  drawAbilities(context, time);
}
