// One run of the real OBS that brings the dock from state to state and takes pictures.

import { cp } from "node:fs/promises";
import path from "node:path";
import { run } from "../obs/command.mjs";
import { Dock } from "../obs/dock.mjs";
import { findFreePort } from "../obs/free-port.mjs";
import { ObsSession } from "../obs/session.mjs";
import { sleep, waitFor } from "../obs/wait.mjs";
import { connectWebsocket } from "../obs/websocket-client.mjs";
import { answer, prepareAnswers, release } from "./answers.mjs";
import { installFonts } from "./stream/fonts.mjs";
import { putStreamOn } from "./stream/obs-scene.mjs";

const checkout = path.resolve(import.meta.dirname, "..", "..");
const buildFolder = process.env.KESTRUNE_BUILD_DIR;
if (!buildFolder) {
  throw new Error("KESTRUNE_BUILD_DIR must name the build folder of the module");
}
const modules = [
  path.join(buildFolder, "kestrune"),
  path.join(buildFolder, "tests", "support", "probe", "kestrune-probe"),
];
// Enough of a picture at little CPU time.
const canvas = { width: 640, height: 360, fps: 10 };
/** For the stream, which is meant to be looked at. */
const streamCanvas = { width: 960, height: 540, fps: 10 };

/** Here the mouse highlights nothing: the empty part of OBS's status bar. */
const mouseRest = { x: 300, y: 845 };

const dockWindow = "^Kestrune$";
/** A narrow dock has no room for the three texts of the hotkey's row. At the right edge tooltips open over the dock. */
const roomForHotkeys = { x: 770, width: 510, height: 700 };
/** Pixels from a dock up to its title bar, in every theme. */
const titleBarDistance = 8;

/** Whether a dock fills its window, whose frame takes less than `frame` pixels. */
function fits(length, whole, frame) {
  return length <= whole && length > whole - frame;
}

export class Stage {
  #picturesFolder;
  #websocket;

  dock;

  /** Use `run`. */
  constructor(session, picturesFolder) {
    this.session = session;
    this.input = session.input;
    this.#picturesFolder = picturesFolder;
  }

  /**
   * Runs OBS for one subject and calls `work` with the stage. Optional members of a subject:
   *  - answers: overrides the usual answers, by command;
   *  - prepare(home, stage): changes the configuration before OBS starts;
   *  - stream: the picture is a drawn stream instead of the test picture;
   *  - websocket: the port and the password of OBS's server; by default any port and no password;
   *  - env: makes environment variables for OBS from the stage's folder;
   *  - size, scale: as for ObsSession.create.
   */
  static async run(name, subject, picturesFolder, work) {
    const folder = path.join(checkout, "build", "screenshots", "sessions", name);
    const session = await ObsSession.create({
      folder,
      settings: { canvas: subject.stream ? streamCanvas : canvas, modules },
      env: {
        PATH: `${path.join(checkout, "tools", "obs", "bin")}:${process.env.PATH}`,
        KESTRUNE_HELPER: path.join(folder, "helper"),
        KESTRUNE_ANSWERS: path.join(folder, "answers"),
        KESTRUNE_SAMPLE_HELPER: path.join(buildFolder, "sample-helper", "sample-helper"),
        KESTRUNE_SAMPLE_HELPER_HOME: path.join(folder, "sample-helper"),
        KESTRUNE_TEST_FOLDER: folder,
        ...subject.env?.(folder),
      },
      size: subject.size,
      scale: subject.scale,
    });
    const stage = new Stage(session, picturesFolder);
    try {
      await stage.#open(subject);
      await work(stage);
    } catch (error) {
      console.error(`screenshots: ${name} failed: ${await session.screenshot("failed")}`);
      throw error;
    } finally {
      await stage.#close();
    }
  }

  async #open(subject) {
    await cp(path.join(import.meta.dirname, "fake-helper"), this.file("helper"));
    await prepareAnswers(this.file("answers"), subject.answers);
    const { home } = this.session;
    await installFonts(home.environment().XDG_DATA_HOME);
    if (subject.stream) {
      await putStreamOn(home, this.session.folder, streamCanvas);
    }
    const { port, password } = subject.websocket ?? { port: await findFreePort() };
    await home.setWebsocketPort(port, password);
    await subject.prepare?.(home, this);
    await this.session.startObs();
    this.#websocket = await connectWebsocket(port, password);
    this.dock = new Dock(this.#websocket, this.input);
  }

  file(name) {
    return path.join(this.session.folder, name);
  }

  /** See answers.mjs. */
  async answer(command, ...lines) {
    await answer(this.file("answers"), command, ...lines);
  }

  async release(command) {
    await release(this.file("answers"), command);
  }

  /** Sends a request over obs-websocket. */
  async call(request, data) {
    return this.#websocket.call(request, data);
  }

  /** Sends a vendor request over obs-websocket. */
  async callModule(requestType) {
    return this.call("CallVendorRequest", { vendorName: "Kestrune", requestType });
  }

  /** Clicks on the title of a section, the widget `name`. */
  async toggle(name, open) {
    await this.dock.click({ name });
    await this.dock.waitForWidget({ name, checked: open });
  }

  async openOnly(section) {
    const { widgets } = await this.dock.snapshot();
    const toggles = widgets.filter(({ class: type, name }) => type === "QToolButton" && name.endsWith("Toggle"));
    for (const { name, checked } of toggles) {
      if (checked !== (name === `${section}Toggle`)) {
        await this.toggle(name, !checked);
      }
    }
  }

  /** Makes the dock a floating window of this size in pixels, at the top of the screen; at its left without `x`. */
  async float(size) {
    const { x, y } = await this.dock.snapshot();
    await this.input.doubleClick(x + 40, y - titleBarDistance);
    await waitFor("the dock to float", async () => !(await this.dock.snapshot()).docked);
    await this.resizeFloating(size);
  }

  /** Resizes the dock's window, in pixels; the dock itself is a little smaller. */
  async resizeFloating(size) {
    await this.input.placeWindow(dockWindow, { x: 0, y: 0, ...size });
    await waitFor("the dock's new size", async () => {
      const { width, height } = await this.dock.snapshot();
      return fits(width, size.width, 20) && fits(height, size.height, 60);
    });
  }

  /** Makes the dock a window that fits the hotkey's section and gets the keys. */
  async floatForHotkeys() {
    await this.float(roomForHotkeys);
    await this.input.focusWindow(dockWindow);
  }

  /**
   * Waits for "Ready", and until OBS's start no longer changes the dock. The account is reported only after the Replay
   * Buffer has started; otherwise two texts race.
   */
  async settle() {
    await this.dock.waitForStatus("Starting…");
    await this.call("StartReplayBuffer");
    await waitFor("the Replay Buffer", async () => (await this.call("GetReplayBufferStatus")).outputActive);
    await this.release("--status");
    await this.dock.waitForStatus("Ready. Press Clip that or your Kestrune hotkey.");
    await this.waitForPreview();
    await this.waitForIdleHelper();
  }

  /** Waits for the first preview, the last query of the start apart from updates. */
  async waitForPreview() {
    await waitFor("the first preview", async () => (await this.dock.widget({ name: "preview" }))?.picture);
  }

  async waitForIdleHelper() {
    const isIdle = async () => (await this.session.obs.childCommands()).length === 0;
    await waitFor("all helper runs to end", isIdle);
  }

  /** Takes a picture of a shot's subject; see screenshots.mjs. */
  async photograph({ name, part, area, window, height, tooltipOf }) {
    await (tooltipOf ? this.#showTooltip(tooltipOf) : this.input.moveMouse(mouseRest.x, mouseRest.y));
    // Styles fade highlights out.
    await sleep(400);
    const file = path.join(this.#picturesFolder, `${name}.png`);
    const whole = area ?? (await (window ? this.input.windowArea(window) : this.#dockArea(part)));
    await this.session.screenshotFile(file, { ...whole, height: height ?? whole.height });
    // Without a time stamp, equal pictures are equal files.
    const plain = ["-strip", "-define", "png:exclude-chunks=date,time"];
    const few = area ? [] : ["-dither", "None", "-colors", "256"];
    await run("mogrify", [...few, ...plain, file]);
    console.log(`screenshots: ${path.relative(checkout, file)}`);
  }

  async #showTooltip(wanted) {
    const { x, y, width, height } = await this.dock.widget(wanted);
    const before = await this.input.countWindows();
    // At the right end there is room for the tooltip, which opens to the left.
    await this.input.moveMouse(x + width - 8, y + Math.floor(height / 2));
    await waitFor("the tooltip", async () => (await this.input.countWindows()) > before);
  }

  /** `part` "header" is the area above the first section. */
  async #dockArea(part) {
    const whole = await this.dock.area();
    if (part !== "header") {
      return whole;
    }
    const firstSection = await this.dock.widget({ name: "styleSectionToggle" });
    return { ...whole, height: firstSection.y - whole.y };
  }

  /** Ends the connection with obs-websocket: the dock can then no longer be asked what it shows. */
  async disconnect() {
    await this.#websocket?.disconnect();
    this.#websocket = undefined;
  }

  async #close() {
    await this.disconnect();
    if (this.session.obs?.running) {
      await this.session.obs.stop();
    }
    await this.session.close();
  }
}
