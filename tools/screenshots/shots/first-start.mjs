// OBS as it first starts with Kestrune: the dock is hidden.

export const prepare = (home) => home.forgetDockState();

export const shots = [
  {
    name: "docks-menu",
    area: { x: 0, y: 0, width: 290, height: 320 },
    async reach({ input }) {
      await input.focusWindow("^OBS ");
      await input.tap("alt", "d");
      await input.tap("up"); // from the first entry to the last
    },
  },
];
