// Real key presses and mouse clicks on an X display.

import { run } from "./command.mjs";
import { scaled } from "./scale.mjs";
import { sleep } from "./wait.mjs";

// X key codes of a PC keyboard. Not xdotool's key names, for which it may press extra modifiers (Alt with F7 on a
// virtual display), so OBS would see another combination.
const keyCodes = {
  escape: 9,
  tab: 23,
  t: 28,
  enter: 36,
  control: 37,
  s: 39,
  d: 40,
  f: 41,
  h: 43,
  shift: 50,
  c: 54,
  alt: 64,
  f8: 74,
  f9: 75,
  f11: 95,
  up: 111,
  down: 116,
  calculator: 148,
};

// OBS polls the keyboard every 25 ms and may miss shorter presses on a busy machine.
const hold_ms = 300;

export class Input {
  #env;
  #scale;

  /** Positions and sizes are for a scale of 100 %; `scale` is Qt's. */
  constructor(display, scale = 1) {
    this.#scale = scale;
    this.#env = { ...process.env, DISPLAY: display };
  }

  /** Presses the keys in order, holds them, and releases them. Names are those of `keyCodes`. */
  async press(...keys) {
    const codes = keys.map(keyCode);
    await this.#xdotool(...codes.flatMap((code) => ["keydown", code]));
    await sleep(hold_ms);
    await this.#xdotool(...codes.reverse().flatMap((code) => ["keyup", code]));
  }

  /** Like `press`, but so brief that windows notice and OBS's hotkeys hardly do. */
  async tap(...keys) {
    const codes = keys.map(keyCode);
    const presses = codes.flatMap((code) => ["keydown", "--delay", "0", code]);
    const releases = codes.reverse().flatMap((code) => ["keyup", "--delay", "0", code]);
    await this.#xdotool(...presses, ...releases);
  }

  /** Types a text of plain letters. */
  async type(text) {
    await this.#xdotool("type", text);
  }

  async click(x, y) {
    await this.#xdotool(...this.#mouseTo(x, y), "click", "1");
  }

  async doubleClick(x, y) {
    await this.#xdotool(...this.#mouseTo(x, y), "click", "--repeat", "2", "--delay", "50", "1");
  }

  async moveMouse(x, y) {
    await this.#xdotool(...this.#mouseTo(x, y));
  }

  /** Turns the wheel by `notches`, down if positive. */
  async wheel(x, y, notches) {
    const button = notches > 0 ? "5" : "4";
    const count = String(Math.abs(notches));
    await this.#xdotool(...this.#mouseTo(x, y), "click", "--repeat", count, button);
  }

  /** Places the first visible window whose title matches; throws if there is none. */
  async placeWindow(titlePattern, area) {
    const { x, y, width, height } = scaled(area, this.#scale);
    const find = ["search", "--sync", "--onlyvisible", "--name", titlePattern];
    await this.#xdotool(...find, "windowmove", String(x), String(y), "windowsize", String(width), String(height));
  }

  /** Focuses the first visible window whose title matches: there is no window manager to do it. */
  async focusWindow(titlePattern) {
    await this.#xdotool("search", "--sync", "--onlyvisible", "--name", titlePattern, "windowfocus", "--sync");
  }

  /** Where the first visible window whose title matches is, without a frame: there is no window manager to draw one. */
  async windowArea(titlePattern) {
    const find = ["search", "--sync", "--onlyvisible", "--name", titlePattern];
    const text = await this.#xdotool(...find, "getwindowgeometry", "--shell");
    const number = (name) => Number(new RegExp(`^${name}=(\\d+)$`, "m").exec(text)[1]) / this.#scale;
    return { x: number("X"), y: number("Y"), width: number("WIDTH"), height: number("HEIGHT") };
  }

  /** How many windows are visible, with menus and tooltips. */
  async countWindows() {
    return (await this.#xdotool("search", "--onlyvisible", "--name", "")).trim().split("\n").length;
  }

  #mouseTo(x, y) {
    const place = scaled({ x, y }, this.#scale);
    return ["mousemove", String(place.x), String(place.y)];
  }

  async #xdotool(...args) {
    return run("xdotool", args, { env: this.#env, limit_ms: 15_000 });
  }
}

function keyCode(key) {
  if (!(key in keyCodes)) {
    throw new Error(`no key code known for "${key}"`);
  }
  // xdotool would take a single digit as the name of that key.
  return String(keyCodes[key]).padStart(3, "0");
}
