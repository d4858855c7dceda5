// Real key presses and mouse clicks on an X display.

import { run } from "./command.mjs";
import { scaled } from "./scale.mjs";
import { sleep } from "./wait.mjs";

// Raw key codes of a PC keyboard as X numbers them. xdotool's key names are no alternative: to type a named key it may
// press modifiers that nobody asked for (Alt with F7 on a virtual display), and OBS then sees another combination.
const keyCodes = {
  escape: 9,
  control: 37,
  d: 40,
  shift: 50,
  c: 54,
  alt: 64,
  f8: 74,
  f9: 75,
  up: 111,
  down: 116,
  calculator: 148,
};

// OBS looks at the keyboard every 25 ms; a shorter press may be missed on a busy machine.
const holdMs = 300;

export class Input {
  #env;
  #scale;

  /** All positions and sizes below are as they would be at 100 %; `scale` is how large Qt draws. */
  constructor(display, scale = 1) {
    this.#scale = scale;
    this.#env = { ...process.env, DISPLAY: display };
  }

  /** Presses the keys in order, holds them together and releases them; names are those of `keyCodes`. */
  async press(...keys) {
    const codes = keys.map(keyCode);
    await this.#xdotool(...codes.flatMap((code) => ["keydown", code]));
    await sleep(holdMs);
    await this.#xdotool(...codes.reverse().flatMap((code) => ["keyup", code]));
  }

  /** Presses the keys like `press`, but so briefly that only windows notice and OBS's hotkeys hardly can. */
  async tap(...keys) {
    const codes = keys.map(keyCode);
    const presses = codes.flatMap((code) => ["keydown", "--delay", "0", code]);
    const releases = codes.reverse().flatMap((code) => ["keyup", "--delay", "0", code]);
    await this.#xdotool(...presses, ...releases);
  }

  /** Clicks with the left button at a position of the screen, in pixels. */
  async click(x, y) {
    await this.#xdotool(...this.#mouseTo(x, y), "click", "1");
  }

  async doubleClick(x, y) {
    await this.#xdotool(...this.#mouseTo(x, y), "click", "--repeat", "2", "--delay", "50", "1");
  }

  /** Moves the mouse, to take it off what it would light up. */
  async moveMouse(x, y) {
    await this.#xdotool(...this.#mouseTo(x, y));
  }

  /** Turns the mouse wheel down (positive) or up (negative) by a number of notches at a position of the screen. */
  async wheel(x, y, notches) {
    const button = notches > 0 ? "5" : "4";
    const count = String(Math.abs(notches));
    await this.#xdotool(...this.#mouseTo(x, y), "click", "--repeat", count, button);
  }

  /** Moves and sizes the first visible window whose title matches the pattern. Throws when there is none. */
  async placeWindow(titlePattern, area) {
    const { x, y, width, height } = scaled(area, this.#scale);
    const find = ["search", "--sync", "--onlyvisible", "--name", titlePattern];
    await this.#xdotool(...find, "windowmove", String(x), String(y), "windowsize", String(width), String(height));
  }

  /** Sends the keys to the first visible window whose title matches; without a window manager nobody else does. */
  async focusWindow(titlePattern) {
    await this.#xdotool("search", "--sync", "--onlyvisible", "--name", titlePattern, "windowfocus", "--sync");
  }

  #mouseTo(x, y) {
    const place = scaled({ x, y }, this.#scale);
    return ["mousemove", String(place.x), String(place.y)];
  }

  async #xdotool(...args) {
    await run("xdotool", args, { env: this.#env, limitMs: 15_000 });
  }
}

function keyCode(key) {
  if (!(key in keyCodes)) {
    throw new Error(`no key code known for "${key}"`);
  }
  // A single digit would be taken for the name of that digit's key.
  return String(keyCodes[key]).padStart(3, "0");
}
