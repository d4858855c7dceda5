// What the dock offers by itself before the helper has named its own choices: keys and the names that they are shown by.

export const dockChoices = {
  layouts: {
    "vtuber-bubble": "Bubble",
    vtuber: "Face panel",
    facecam: "Facecam",
    podcast: "Podcast",
    gameplay: "Gameplay only",
  },
  styles: { rune: "Rune", neon: "Neon", clean: "Clean", meme: "Bold Meme", none: "None" },
  fonts: { bebas: "Bebas Neue", montserrat: "Montserrat", inter: "Inter", bangers: "Bangers" },
};

export const noCaptions = "none";

/** The keys on offer after this `status` event (which may be missing), by member. */
export function offeredChoices(status) {
  const offered = {};
  for (const [member, names] of Object.entries(dockChoices)) {
    const own = Array.isArray(status?.[member]) ? status[member].filter((key) => typeof key === "string") : [];
    offered[member] = status?.linked === true && own.length > 0 ? own : Object.keys(names);
  }
  return offered;
}
