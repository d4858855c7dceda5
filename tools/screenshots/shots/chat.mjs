import { switchReplayBufferOn } from "../replay-buffer.mjs";

const settings = { event: "chat", command: "!rune", cooldown_s: 30, per_stream_cap: 10 };
const enabled = { ...settings, enabled: true };

export const prepare = (home) => switchReplayBufferOn(home);

/** Saves the settings, lets the helper answer with `chat`, and waits for the state. */
async function save(stage, chat, state) {
  await stage.answer("--chat-set", chat);
  await stage.dock.click({ text: "Save chat settings" });
  await stage.dock.waitForWidget({ text: state });
}

export const shots = [
  {
    name: "chat-one-more-step",
    async reach(stage) {
      await stage.settle();
      await stage.openOnly("chatBox");
      await stage.dock.waitForWidget({ text: "Off." });
      const consent = { granted: false, consent_url: "https://kestrune.example/allow" };
      await save(stage, { ...enabled, ...consent }, /^One more step/);
    },
  },
  {
    name: "chat-on",
    reach: (stage) => save(stage, { ...enabled, granted: true, stream_count: 3 }, /^On: mods can type/),
  },
  {
    name: "chat-error",
    reach: (stage) => save(stage, { event: "chat", error: "Twitch did not answer. Try again later." }, /^Twitch/),
  },
];
