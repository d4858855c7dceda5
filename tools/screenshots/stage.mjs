// One run of the real OBS in which the dock is brought from one state to the next and photographed.

import { cp } from "node:fs/promises";
import path from "node:path";
import { run } from "../obs/command.mjs";
import { Dock } from "../obs/dock.mjs";
import { findFreePort } from "../obs/free-port.mjs";
import { ObsSession } from "../obs/session.mjs";
import { sleep, waitFor } from "../obs/wait.mjs";
import { connectWebsocket } from "../obs/websocket-client.mjs";
import { answer, prepareAnswers, release } from "./answers.mjs";

const checkout = path.resolve(import.meta.dirname, "..", "..");
const buildFolder = process.env.KESTRUNE_BUILD_DIR;
if (!buildFolder) {
  throw new Error("KESTRUNE_BUILD_DIR must name the build folder of the module");
}
const modules = [
  path.join(buildFolder, "kestrune"),
  path.join(buildFolder, "tests", "support", "probe", "kestrune-probe"),
];
// Enough of a picture, and little work for the processor.
const canvas = { width: 640, height: 360, fps: 10 };

/** Where the mouse lights up nothing: the empty part of OBS's status bar. */
const mouseRest = { x: 300, y: 845 };

/** Title of the window of a floating dock. */
const dockWindow = "^Kestrune$";
/** So far above a dock is its title bar, in pixels, in every theme. */
const titleBarDistance = 8;

/** Whether a dock of this length, in pixels, is in a window of that, whose title bar and frame take up to `frame`. */
function fits(length, whole, frame) {
  return length <= whole && length > whole - frame;
}

export class Stage {
  #picturesFolder;
  #websocket;

  /** The dock as a user sees it. */
  dock;

  /** Use `run`. */
  constructor(session, picturesFolder) {
    this.session = session;
    this.input = session.input;
    this.#picturesFolder = picturesFolder;
  }

  /**
   * Runs OBS for one subject and calls `work` with the stage. The subject may have the members
   *  - answers: as for `answer`, by command, besides the usual ones;
   *  - prepare(home, stage): changes the configuration before OBS starts;
   *  - env: environment variables for OBS, made from the stage's folder;
   *  - size, scale: as for ObsSession.create.
   */
  static async run(name, subject, picturesFolder, work) {
    const folder = path.join(checkout, "build", "screenshots", "sessions", name);
    const session = await ObsSession.create({
      folder,
      settings: { canvas, modules },
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
    const port = await findFreePort();
    await home.setWebsocketPort(port);
    await subject.prepare?.(home, this);
    await this.session.startObs();
    this.#websocket = await connectWebsocket(port);
    this.dock = new Dock(this.#websocket, this.input);
  }

  /** Path of a file of this run by its name. */
  file(name) {
    return path.join(this.session.folder, name);
  }

  /** What the helper's runs with this command answer from now on: see answers.mjs. */
  async answer(command, ...lines) {
    await answer(this.file("answers"), command, ...lines);
  }

  /** Lets the helper's runs with this command go on that hold. */
  async release(command) {
    await release(this.file("answers"), command);
  }

  /** Sends a request to OBS as a remote control does. */
  async call(request, data) {
    return this.#websocket.call(request, data);
  }

  /** Sends a request to the module as a remote control does. */
  async callModule(requestType) {
    return this.call("CallVendorRequest", { vendorName: "Kestrune", requestType });
  }

  /** Opens or closes a section by a click on its title, the widget `name`. */
  async toggle(name, open) {
    await this.dock.click({ name });
    await this.dock.waitForWidget({ name, checked: open });
  }

  /** Opens this section and closes all others. */
  async openOnly(section) {
    const { widgets } = await this.dock.snapshot();
    const toggles = widgets.filter(({ class: type, name }) => type === "QToolButton" && name.endsWith("Toggle"));
    for (const { name, checked } of toggles) {
      if (checked !== (name === `${section}Toggle`)) {
        await this.toggle(name, !checked);
      }
    }
  }

  /** Takes the dock out of OBS's window, as a window of this size, in pixels, at the screen's upper left corner. */
  async float(size) {
    const { x, y } = await this.dock.snapshot();
    await this.input.doubleClick(x + 40, y - titleBarDistance);
    await waitFor("the dock to float", async () => !(await this.dock.snapshot()).docked);
    await this.resizeFloating(size);
  }

  /** Gives the floating dock this size, in pixels; the dock alone is a little smaller. */
  async resizeFloating(size) {
    await this.input.placeWindow(dockWindow, { x: 0, y: 0, ...size });
    await waitFor("the dock's new size", async () => {
      const { width, height } = await this.dock.snapshot();
      return fits(width, size.width, 20) && fits(height, size.height, 60);
    });
  }

  /** Sends the keys to the dock's window, which must float. */
  async focusFloatingDock() {
    await this.input.focusWindow(dockWindow);
  }

  /**
   * Brings the dock to "Ready", and waits until nothing that belongs to the start of OBS will change it any more. The
   * helper's answer about the account comes when the Replay Buffer runs already: otherwise two texts race.
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

  /** Waits for the first preview: the last that the dock asks for at its start, apart from updates. */
  async waitForPreview() {
    await waitFor("the first preview", async () => (await this.dock.widget({ name: "preview" }))?.picture);
  }

  /** Waits until no helper run is in flight. */
  async waitForIdleHelper() {
    const isIdle = async () => (await this.session.obs.childCommands()).length === 0;
    await waitFor("all helper runs to end", isIdle);
  }

  /** Photographs the dock, with the mouse out of the way, or what the shot's `part` or `area` names. */
  async photograph({ name, part, area }) {
    await this.input.moveMouse(mouseRest.x, mouseRest.y);
    // Styles fade out what the mouse has lit up.
    await sleep(400);
    const file = path.join(this.#picturesFolder, `${name}.png`);
    await this.session.screenshotFile(file, area ?? (await this.#dockArea(part)));
    // Without the time in it the picture of the same thing is the same file.
    const plain = ["-strip", "-define", "png:exclude-chunks=date,time"];
    const few = area ? [] : ["-dither", "None", "-colors", "256"];
    await run("mogrify", [...few, ...plain, file]);
    console.log(`screenshots: ${path.relative(checkout, file)}`);
  }

  /** The whole dock, or of the part "header" what is above its first section. */
  async #dockArea(part) {
    const whole = await this.dock.area();
    if (part !== "header") {
      return whole;
    }
    const firstSection = await this.dock.widget({ name: "styleSectionToggle" });
    return { ...whole, height: firstSection.y - whole.y };
  }

  async #close() {
    await this.#websocket?.disconnect();
    if (this.session.obs?.running) {
      await this.session.obs.stop();
    }
    await this.session.close();
  }
}
