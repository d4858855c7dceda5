// The dock's own choices, until the helper names others: keys and their display names.

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

/** The keys on offer after this `status` event (may be undefined), by member. */
export function offeredChoices(status) {
  const offered = {};
  for (const [member, names] of Object.entries(dockChoices)) {
    const own = Array.isArray(status?.[member]) ? status[member].filter((key) => typeof key === "string") : [];
    offered[member] = status?.linked === true && own.length > 0 ? own : Object.keys(names);
  }
  return offered;
}
