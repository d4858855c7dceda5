// The settings of OBS's server for remote controls.

/** Like the server's own defaults, so that the picture shows them. */
export const websocket = { port: 4455, password: "only for this picture" };

export const shots = [
  {
    name: "websocket-settings",
    window: "^WebSocket Server Settings$",
    async reach(stage) {
      const { input } = stage;
      await stage.disconnect(); // or the picture would show this connection
      await input.focusWindow("^OBS ");
      await input.tap("alt", "t");
      await input.tap("up"); // from the first entry to the last
      await input.tap("enter");
      await input.focusWindow("^WebSocket Server Settings$");
    },
  },
];
