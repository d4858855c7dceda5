// A clip from the request to what became of it.

import { errorColour } from "../../../tools/obs/dock.mjs";
import { waitFor } from "../../../tools/obs/wait.mjs";
import { clipHotkey } from "../../obs/support/test-session.mjs";
import { processes } from "./processes.mjs";

const ways = {
  hotkey: (test) => test.session.input.press(...clipHotkey.keys),
  button: (test) => test.dock.click({ name: "clipBtn", enabled: true }),
  "remote control": (test) =>
    test.websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType: "ClipThat" }),
  chat: (test) => test.runSampleHelper("--say", "viewer"),
};

/** The ways in which a clip can be asked for. */
export const wayNames = Object.keys(ways);

const ready = /^Your Short is ready: /;
// Without the Replay Buffer the module starts it, and asks for another press.
const startsBuffer = /^(Starting the Replay Buffer…|Replay Buffer on\.|Ready\.)/;
// A save that comes later than that still becomes a Short.
const saveIsLate = /^OBS didn't save the replay/;
const latestSave_ms = 30_000;

/** Whether a status line, {text, styleSheet}, that has stood for so long is the last one of a clip. */
function isOutcome({ text, styleSheet }, stood_ms) {
  if (saveIsLate.test(text)) {
    return stood_ms > latestSave_ms;
  }
  return ready.test(text) || startsBuffer.test(text) || styleSheet === errorColour;
}

/**
 * Asks for a clip and follows the status line to its outcome: {made, text, texts} with all that it read meanwhile. The
 * OBS without the module saves a replay, too.
 *
 * @param during   what happens meanwhile; it is given a function that answers whether the clip is over.
 * @param limit_ms  after that there is no outcome, and that is an error.
 */
export async function clip({ station, control }, way, { during = async () => {}, limit_ms = 300_000 } = {}) {
  const { test } = station;
  const ask = () => test.dock.widget({ name: "status" });
  // An OBS that was suspended meanwhile has no time for an answer.
  const statusLine = () => ask().catch(ask);
  const texts = [(await statusLine()).text];
  let since = performance.now();
  let isOver = false;
  const readOutcome = async () => {
    const status = await statusLine();
    if (status.text !== texts.at(-1)) {
      texts.push(status.text);
      since = performance.now();
    }
    isOver = texts.length > 1 && isOutcome(status, performance.now() - since);
    return isOver && status;
  };
  await Promise.all([ways[way](test), control.request("SaveReplayBuffer")]);
  const explain = () => JSON.stringify(texts);
  const [{ text }] = await Promise.all([
    waitFor(`the outcome of a clip by ${way}`, readOutcome, { limit_ms, every_ms: 40, explain }),
    during(() => isOver),
  ]);
  return { made: ready.test(text), text, texts: texts.slice(1) };
}

/** Waits for the helper run that makes a Short; undefined when the clip is over without one. */
export async function waitForHelperRun(test, isOver) {
  const isRun = ({ parent, command }) => parent === test.session.obs.pid && command.includes(" --process ");
  const found = await waitFor("a helper run", async () => (await processes()).find(isRun) ?? isOver(), {
    limit_ms: 300_000,
    every_ms: 30,
  });
  return found === true ? undefined : found;
}
