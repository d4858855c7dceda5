// Shapes for the drawn stream. A context is that of a canvas.

/** Begins a path through points: x, y, x, y... */
function follow(context, points) {
  context.beginPath();
  for (let index = 0; index < points.length; index += 2) {
    context.lineTo(points[index], points[index + 1]);
  }
}

/** Fills what is between points with a colour or gradient. */
export function polygon(context, points, fill) {
  context.fillStyle = fill;
  follow(context, points);
  context.fill();
}

export function ellipse(context, x, y, radiusX, radiusY, fill) {
  context.fillStyle = fill;
  context.beginPath();
  context.ellipse(x, y, radiusX, radiusY, 0, 0, 2 * Math.PI);
  context.fill();
}

export function box(context, x, y, width, height, radius, fill) {
  context.fillStyle = fill;
  context.beginPath();
  context.roundRect(x, y, width, height, radius);
  context.fill();
}

/** Draws a line through points, with round ends. */
export function stroke(context, points, width, colour) {
  Object.assign(context, { strokeStyle: colour, lineWidth: width, lineCap: "round", lineJoin: "round" });
  follow(context, points);
  context.stroke();
}

/** A gradient from top to bottom through these colours, evenly spaced. */
export function downwards(context, top, bottom, colours) {
  const gradient = context.createLinearGradient(0, top, 0, bottom);
  colours.forEach((colour, index) => gradient.addColorStop(index / (colours.length - 1), colour));
  return gradient;
}

/** A round light that fades out; `colour` is red, green and blue. */
export function glow(context, x, y, radius, colour, opacity) {
  const gradient = context.createRadialGradient(x, y, 0, x, y, radius);
  gradient.addColorStop(0, `rgba(${colour},${opacity})`);
  gradient.addColorStop(1, `rgba(${colour},0)`);
  ellipse(context, x, y, radius, radius, gradient);
}

/** Numbers from 0 to 1 that look random, always the same ones. */
export function noise(index) {
  const value = Math.sin(index * 127.1) * 43758.5453;
  return value - Math.floor(value);
}
