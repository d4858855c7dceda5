// People in front of their cameras.

import { box, downwards, ellipse, glow, noise, polygon, stroke } from "./shapes.mjs";

/** Colours of who is seen; `ears` make a drawn figure of somebody. */
export const ana = { skin: "#f1b48d", hair: "#43243a", clothes: "#6c4ce0", phones: "#20e0c8", room: "#34306b" };
export const ben = {
  skin: "#a86e47",
  hair: "#17131f",
  clothes: "#e2603f",
  phones: "#f4f4f4",
  room: "#1f4a55",
  isMirrored: true,
};
export const figure = { skin: "#ffe0cf", hair: "#ff8fc7", clothes: "#2b2f77", phones: "#7df0ff", ears: "#ff8fc7" };

function drawBooks(context, area) {
  const shelf = area.y + area.height * 0.36;
  for (let book = 0; book < 9; book += 1) {
    const size = area.height * (0.12 + 0.08 * noise(book));
    const x = area.x + area.width * (0.05 + 0.03 * book);
    context.fillStyle = `hsl(${Math.floor(noise(book + 5) * 360)} 45% 52%)`;
    context.fillRect(x, shelf - size, area.width * 0.024, size);
  }
  context.fillStyle = "#8a5a3c";
  context.fillRect(area.x + area.width * 0.03, shelf, area.width * 0.31, area.height * 0.03);
}

/** A wall with books, a poster and lights. */
function drawRoom(context, area, { room }) {
  context.fillStyle = downwards(context, area.y, area.y + area.height, [room, "#151228"]);
  context.fillRect(area.x, area.y, area.width, area.height);
  const at = (right, down) => [area.x + area.width * right, area.y + area.height * down];
  glow(context, ...at(0.92, 0.1), area.height * 0.85, "255,86,190", 0.5);
  glow(context, ...at(0.05, 0.9), area.height * 0.8, "60,200,255", 0.4);
  drawBooks(context, area);
  const [x, y] = at(0.72, 0.1);
  box(context, x, y, area.width * 0.19, area.height * 0.36, 8, "#f6d9a8");
  const [sunX, sunY] = at(0.815, 0.25);
  ellipse(context, sunX, sunY, area.height * 0.08, area.height * 0.08, "#e2603f");
  context.fillStyle = "#39507f";
  context.fillRect(x, y + area.height * 0.24, area.width * 0.19, area.height * 0.12);
}

function drawBody(context, { skin, clothes }) {
  ellipse(context, 0, 190, 150, 108, clothes);
  context.fillStyle = clothes;
  context.fillRect(-150, 190, 300, 200);
  box(context, -28, 62, 56, 60, 20, skin);
  stroke(context, [-34, 100, 0, 132, 34, 100], 15, "rgba(0,0,0,0.22)");
}

function drawEars(context, { ears, skin }) {
  for (const side of [-1, 1]) {
    polygon(context, [side * 28, -92, side * 92, -40, side * 90, -150], ears);
    polygon(context, [side * 48, -84, side * 80, -58, side * 80, -120], skin);
  }
}

function drawFace(context, { skin, hair }, time) {
  ellipse(context, 0, 0, 80, 92, skin);
  ellipse(context, 0, -64, 87, 44, hair);
  polygon(context, [-86, -62, -86, 20, -62, -30], hair);
  polygon(context, [86, -62, 86, 20, 62, -30], hair);
  const isBlinking = time % 3 > 2.85;
  for (const side of [-1, 1]) {
    ellipse(context, side * 32, 6, 15, isBlinking ? 2 : 13, "white");
    ellipse(context, side * 32 - 3, 6, 10, isBlinking ? 2 : 11, "#2a1c33");
    ellipse(context, side * 32, 2, 3, isBlinking ? 0 : 3, "white");
    stroke(context, [side * 20, -25, side * 46, -21], 6, "#2a1c33");
    ellipse(context, side * 50, 36, 13, 8, "rgba(255,90,110,0.28)");
  }
  const open = 11 + 9 * Math.abs(Math.sin(time * 7));
  ellipse(context, 0, 50, 24, open, "#7b2433");
  ellipse(context, 0, 50 - open * 0.55, 16, open * 0.3, "white");
}

function drawHeadphones(context, { phones }) {
  Object.assign(context, { strokeStyle: phones, lineWidth: 15 });
  context.beginPath();
  context.arc(0, -4, 98, Math.PI * 1.03, Math.PI * 1.97);
  context.stroke();
  for (const side of [-1, 1]) {
    box(context, side * 96 - 20, -26, 40, 72, 18, phones);
  }
  stroke(context, [-96, 40, -78, 84, -40, 80], 7, phones);
  ellipse(context, -36, 79, 13, 9, "#1b1b28");
}

/** Draws somebody with the middle of the face at x, y; at `size` 1 the face is 184 pixels high. */
export function drawPerson(context, { x, y, size }, look, time) {
  context.save();
  context.translate(x, y);
  context.scale(size, size);
  if (look.ears) {
    ellipse(context, 0, 34, 108, 134, look.hair);
  }
  drawBody(context, look);
  context.translate(0, 5 * Math.sin(time * 2.2));
  context.rotate(0.05 * Math.sin(time * 1.3));
  if (look.ears) {
    drawEars(context, look);
  }
  drawFace(context, look, time);
  drawHeadphones(context, look);
  context.restore();
}

/** Draws somebody in a room, cut to the area. */
export function drawCamera(context, { x, y, width, height }, look, time) {
  context.save();
  context.beginPath();
  context.rect(x, y, width, height);
  context.clip();
  context.translate(x + width / 2, y);
  context.scale(look.isMirrored ? -1 : 1, 1);
  drawRoom(context, { x: -width / 2, y: 0, width, height }, look);
  drawPerson(context, { x: 0, y: height * 0.48, size: Math.min(height / 370, width / 480) }, look, time);
  context.restore();
}
