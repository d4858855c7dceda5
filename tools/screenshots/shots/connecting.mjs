// From a fresh OBS to a linked account and a running Replay Buffer.

const notLinked = { event: "status", linked: false };
const linked = { event: "status", linked: true, login: "ana" };

export const answers = {
  "--status": ["hold", notLinked],
  "--link": [{ event: "code", url: "https://kestrune.example/link", code: "ABCD-1234" }, "hold", { event: "linked" }],
};

export const shots = [
  { name: "starting", part: "header", reach: ({ dock }) => dock.waitForStatus("Starting…") },
  {
    name: "not-connected",
    async reach(stage) {
      await stage.release("--status");
      // Wait for both account queries of the start.
      await stage.waitForPreview();
      await stage.waitForIdleHelper();
      await stage.dock.waitForStatus("Not connected. Click Connect account (one click in your browser).");
    },
  },
  {
    name: "chat-off",
    async reach(stage) {
      await stage.openOnly("chatBox");
      await stage.dock.waitForWidget({ text: "Off. Connect your Twitch-linked account to use it.", visible: true });
    },
  },
  {
    name: "connecting",
    part: "header",
    async reach(stage) {
      const { dock } = stage;
      await stage.openOnly();
      await dock.click({ text: "Connect account" });
      await dock.waitForStatus("Finish in your browser (code ABCD-1234). Waiting…");
    },
  },
  {
    name: "revoked",
    part: "header",
    async reach(stage) {
      await stage.answer("--status", { ...notLinked, error: "revoked" });
      await stage.release("--link");
      await stage.dock.waitForWidget({ text: "This device was revoked. Connect again." });
    },
  },
  {
    name: "replay-buffer-needs-settings",
    part: "header",
    async reach(stage) {
      await stage.answer("--status", linked);
      await stage.answer("--link", { event: "linked" });
      await stage.dock.click({ text: "Connect account" });
      await stage.dock.waitForWidget({ name: "status", text: /OBS needs to apply it/ });
    },
  },
];
