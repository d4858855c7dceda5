// The dock as a user meets it: what it shows (asked from the test module) and real clicks on what it shows.

import { sleep, waitFor } from "./wait.mjs";

/** Style sheets of the status line. */
export const errorColour = "color:#ff6b81";
export const informationColour = "color:#8a90a6";

/** What the status line reads when nothing is left to do before a clip; which of the two is a matter of timing. */
export const readyStatus = /^(Replay Buffer on\. Ready to clip|Ready\. Press Clip that or your Kestrune hotkey)\.$/;

// Qt takes a click that follows the opening of a list too soon for the second half of a double click.
const openListPauseMs = 600;

export class Dock {
  #websocket;
  #input;

  /** `websocket` is a connected obs-websocket client, `input` the keyboard and mouse of OBS's display. */
  constructor(websocket, input) {
    this.#websocket = websocket;
    this.#input = input;
  }

  /** Everything the dock shows now, or only its widgets of one name, which costs OBS a small part of that. */
  async snapshot(name) {
    const { responseData } = await this.#websocket.call("CallVendorRequest", {
      vendorName: "kestrune-probe",
      requestType: "snapshot",
      ...(name && { requestData: { name } }),
    });
    if (responseData.error) {
      throw new Error(`no snapshot of the dock: ${responseData.error}`);
    }
    return responseData;
  }

  /**
   * The first widget whose members equal those of `wanted`, for example {name: "clipBtn"}; a regular expression is
   * matched. Undefined when there is none.
   */
  async widget(wanted) {
    const { widgets } = await this.snapshot(wanted.name);
    return widgets.find((widget) => matches(widget, wanted));
  }

  /** Waits for such a widget and returns it. */
  async waitForWidget(wanted, limitMs = 20_000) {
    return waitFor(`the widget ${describe(wanted)}`, () => this.widget(wanted), {
      limitMs,
      explain: async () => `the status line reads "${(await this.widget({ name: "status" }))?.text}"`,
    });
  }

  /** Waits until the status line shows the text (a string or a regular expression) in the colour. */
  async waitForStatus(text, styleSheet = informationColour, limitMs = 20_000) {
    return this.waitForWidget({ name: "status", text, styleSheet }, limitMs);
  }

  /** Clicks on such a widget with the mouse, scrolling the dock with the wheel until the widget can be reached. */
  async click(wanted) {
    await this.waitForWidget({ ...wanted, visible: true });
    let before;
    const target = await waitFor(`a way to click on ${describe(wanted)}`, async () => {
      const widget = await this.widget(wanted);
      // What is being laid out is elsewhere when the click comes.
      const rests = before?.x === widget.x && before.y === widget.y;
      before = widget;
      if (widget.takesClicks) {
        return rests ? widget : undefined;
      }
      const scrollArea = centre(await this.widget({ name: "dockScroll" }));
      await this.#input.wheel(scrollArea.x, scrollArea.y, centre(widget).y > scrollArea.y ? 1 : -1);
      return undefined;
    });
    const { x, y } = centre(target);
    // A check box fills its row, but only its mark and text, at the left, take clicks.
    await this.#input.click(target.class === "QCheckBox" ? target.x + 8 : x, y);
  }

  /** Opens a section; while OBS lays out its window at the start, a click may hit something else. */
  async openSection(name) {
    await waitFor(`the section ${name} to open`, async () => {
      if (await this.widget({ name, visible: true })) {
        return true;
      }
      await this.#input.press("escape");
      await this.click({ name: `${name}Toggle` });
      return this.waitForWidget({ name, visible: true }, 1000).catch(() => false);
    });
  }

  /** Opens the list of such a box and clicks on the entry with the text. */
  async choose(wanted, text) {
    await waitFor(`"${text}" to be chosen`, async () => {
      const { x, y } = centre((await this.#openList(wanted)).find((item) => item.text === text));
      await this.#input.click(x, y);
      // A click that a busy OBS sees too soon after the one that opened the list counts as its double click.
      return this.waitForWidget({ ...wanted, open: false, current: text }, 2000).catch(() => false);
    });
  }

  /** Opens the list of such a box and returns its entries. */
  async #openList(wanted) {
    return waitFor(`the list of ${describe(wanted)} to stay open`, async () => {
      // On a busy machine Qt may see the end of the click so late that it takes it for the choice of an entry.
      if (!(await this.widget(wanted))?.open) {
        await this.click(wanted);
        // While OBS lays out its window at the start, a click may hit something else.
        await this.waitForWidget({ ...wanted, open: true }, 2000).catch(() => {});
      }
      await sleep(openListPauseMs);
      const { open, items } = await this.widget(wanted);
      return open && items;
    });
  }

  /** The part of the screen that shows the dock, without the empty space below its last section. */
  async area() {
    const { x, y, width, widgets } = await this.snapshot();
    const space = ["dockScroll", "qt_scrollarea_viewport", "dockContent"];
    const shown = widgets.filter((widget) => widget.takesClicks && !space.includes(widget.name));
    const bottom = Math.max(...shown.map((widget) => widget.y + widget.height));
    return { x, y, width, height: bottom - y + 8 };
  }
}

function matches(widget, wanted) {
  return Object.entries(wanted).every(([member, value]) =>
    value instanceof RegExp ? value.test(widget[member]) : widget[member] === value,
  );
}

function describe(wanted) {
  return JSON.stringify(wanted, (_, value) => (value instanceof RegExp ? String(value) : value));
}

function centre({ x, y, width, height }) {
  return { x: x + Math.floor(width / 2), y: y + Math.floor(height / 2) };
}
