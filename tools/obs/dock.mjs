// The dock as users see it: its content, from the test module, and real clicks.

import { sleep, waitFor } from "./wait.mjs";

export const errorColour = "color:#ff6b81";
export const informationColour = "color:#8a90a6";

/** Which of these texts is shown when a clip is possible depends on timing. */
export const readyStatus = /^(Replay Buffer on\. Ready to clip|Ready\. Press Clip that or your Kestrune hotkey)\.$/;

// Qt takes a click soon after the opening of a list as part of a double click.
const openListPause_ms = 600;

export class Dock {
  #websocket;
  #input;

  /** `websocket` is a connected obs-websocket client, `input` OBS's keyboard and mouse. */
  constructor(websocket, input) {
    this.#websocket = websocket;
    this.#input = input;
  }

  /** What the dock shows; with `name` only those widgets, which costs OBS much less. */
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

  /** The first widget that matches `wanted`, such as {name: "clipBtn"}, whose members may be regular expressions. */
  async widget(wanted) {
    const { widgets } = await this.snapshot(wanted.name);
    return widgets.find((widget) => matches(widget, wanted));
  }

  async waitForWidget(wanted, limit_ms = 20_000) {
    return waitFor(`the widget ${describe(wanted)}`, () => this.widget(wanted), {
      limit_ms,
      explain: async () => `the status line reads "${(await this.widget({ name: "status" }))?.text}"`,
    });
  }

  /** `text` is a string or a regular expression. */
  async waitForStatus(text, styleSheet = informationColour, limit_ms = 20_000) {
    return this.waitForWidget({ name: "status", text, styleSheet }, limit_ms);
  }

  /** Clicks on a widget, scrolling the dock with the wheel until it is visible. */
  async click(wanted) {
    await this.waitForWidget({ ...wanted, visible: true });
    let before;
    const target = await waitFor(`a way to click on ${describe(wanted)}`, async () => {
      const widget = await this.widget(wanted);
      // A widget still being laid out would have moved before the click.
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
    // A check box takes clicks only on its mark and text.
    await this.#input.click(target.class === "QCheckBox" ? target.x + 8 : x, y);
  }

  /** Opens a section. Retries, because clicks may miss while OBS lays out its window. */
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

  /** Chooses the entry with this text in a combo box. */
  async choose(wanted, text) {
    await waitFor(`"${text}" to be chosen`, async () => {
      const { x, y } = centre((await this.#openList(wanted)).find((item) => item.text === text));
      await this.#input.click(x, y);
      // A busy OBS may take it as a double click.
      return this.waitForWidget({ ...wanted, open: false, current: text }, 2000).catch(() => false);
    });
  }

  /** Opens the list of a combo box and returns its entries. */
  async #openList(wanted) {
    return waitFor(`the list of ${describe(wanted)} to stay open`, async () => {
      // A busy Qt may see the button's release late and take it as choosing an entry.
      if (!(await this.widget(wanted))?.open) {
        await this.click(wanted);
        // Clicks may miss while OBS lays out its window.
        await this.waitForWidget({ ...wanted, open: true }, 2000).catch(() => {});
      }
      await sleep(openListPause_ms);
      const { open, items } = await this.widget(wanted);
      return open && items;
    });
  }

  /** The dock's screen area, without the empty space below its last section. */
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
