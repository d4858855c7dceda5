// Pictures of finished Shorts. Each shot has one Short or several side by side.
//  - stream: what the replay shows, by its name in stream.mjs;
//  - look: the helper's options;
//  - says: what is spoken when the picture is taken;
//  - camera: the helper's setting of that name;
//  - label: lines below the Short.

const rune = { layout: "vtuber-bubble", style: "rune", font: "bebas", "caption-position": "auto" };

/** Where the stream has its camera. */
const webcam = "0.7,0.7,0.3,0.3";

function layout(label, key, stream, says) {
  return { label: [label], stream, says, look: { ...rune, layout: key } };
}

function style(label, key, fontLabel, font) {
  const look = { ...rune, layout: "facecam", style: key, font };
  return { label: [label, fontLabel], stream: "game and camera", says: "One heart left,\nand I made it!", look };
}

export const shots = [
  {
    name: "short",
    shorts: [
      { label: [], stream: "game and camera", says: "One heart left,\nand I made it!", look: rune, camera: webcam },
    ],
  },
  {
    name: "layouts",
    shorts: [
      layout("Bubble", "vtuber-bubble", "game and figure", "Look at that jump!"),
      layout("Face panel", "vtuber", "game and figure", "Look at that jump!"),
      layout("Facecam", "facecam", "game and camera", "Look at that jump!"),
      layout("Podcast", "podcast", "two speakers", "So what happened then?"),
      layout("Gameplay only", "gameplay", "game and camera", "Look at that jump!"),
    ],
  },
  {
    name: "caption-styles",
    shorts: [
      style("Rune", "rune", "Bebas Neue", "bebas"),
      style("Neon", "neon", "Montserrat", "montserrat"),
      style("Clean", "clean", "Inter", "inter"),
      style("Bold Meme", "meme", "Bangers", "bangers"),
      style("None", "none", "", "bebas"),
    ],
  },
];
