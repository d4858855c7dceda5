// An OBS session for the demo and the end-to-end tests: home folder, display, OBS and its input.

import { access, mkdir, rm } from "node:fs/promises";
import os from "node:os";
import path from "node:path";
import { Input } from "./input.mjs";
import { makeTestVideo } from "./media.mjs";
import { ObsHome } from "./obs-home.mjs";
import { ObsProcess } from "./obs-process.mjs";
import { scaled } from "./scale.mjs";
import { screenshot } from "./screenshot.mjs";
import { screen, startXvfb } from "./xvfb.mjs";

export class ObsSession {
  #xvfb;
  #env;
  #size;
  #starts = 0;

  /** Undefined before `startObs`. */
  obs;

  /** Use `create`. */
  constructor(folder, home, { xvfb, display, size, scale, env }) {
    this.folder = folder;
    this.home = home;
    this.display = display;
    this.scale = scale;
    this.input = new Input(display, scale);
    this.#xvfb = xvfb;
    this.#env = env;
    this.#size = size;
  }

  /**
   * Makes a session in `folder`, which is emptied first.
   *
   * @param settings  as for `ObsHome.seed`, without the video: a test picture is made.
   * @param env       more environment variables for OBS.
   * @param display   X display; if undefined, a virtual one is started.
   * @param size      size of the virtual display, in pixels at 100 %.
   * @param scale     Qt's scale: 1.5 is 150 %. Positions and sizes are always for 100 %.
   */
  static async create({ folder, settings, env = {}, display, size = screen, scale = 1 }) {
    await rm(folder, { recursive: true, force: true });
    await mkdir(folder, { recursive: true });
    const video = path.join(folder, "test-picture.mp4");
    await makeTestVideo(video, { ...settings.canvas, seconds: 20 });
    const home = new ObsHome(path.join(folder, "home"));
    await home.seed({ ...settings, video });
    const pixels = { width: size.width * scale, height: size.height * scale };
    const xvfb = display ? undefined : await startXvfb(path.join(folder, "xvfb.log"), pixels);
    return new ObsSession(folder, home, { xvfb, display: display ?? xvfb.display, size, scale, env });
  }

  /** Starts OBS and waits until modules and scenes are loaded. KESTRUNE_BUILD_DIR must name the build folder. */
  async startObs(flags = []) {
    this.#starts += 1;
    // Otherwise OBS sometimes loses a click or key release; see kept_events.cpp.
    const ours = path.join("tools", "obs", "kept_events", "libkept_events.so");
    const keptEvents = path.join(process.env.KESTRUNE_BUILD_DIR, ours);
    await access(keptEvents);
    this.obs = new ObsProcess(
      {
        ...process.env,
        // Its default is in the user's home, which OBS does not get.
        XAUTHORITY: process.env.XAUTHORITY ?? path.join(os.homedir(), ".Xauthority"),
        LIBGL_ALWAYS_SOFTWARE: "1",
        QT_QPA_PLATFORM: "xcb",
        DISPLAY: this.display,
        ...(this.scale === 1 ? {} : { QT_SCALE_FACTOR: String(this.scale) }),
        ...this.home.environment(),
        ...this.#env,
        LD_PRELOAD: [keptEvents, this.#env.LD_PRELOAD].filter(Boolean).join(":"),
      },
      path.join(this.folder, `obs-${this.#starts}.log`),
      flags,
    );
    await this.obs.waitForLine(/Loaded scenes:/);
    if (this.#xvfb) {
      // There is no window manager to place the window.
      await this.input.placeWindow("^OBS ", { x: 0, y: 0, ...this.#size });
    }
  }

  /** Saves a screenshot, or its `area`, as `name`.png in the session's folder; returns its path. */
  async screenshot(name, area) {
    return this.screenshotFile(path.join(this.folder, `${name}.png`), area);
  }

  /** The same for any path. */
  async screenshotFile(file, area) {
    return screenshot(this.display, file, area && scaled(area, this.scale));
  }

  /** Ends everything; safe at any time. */
  async close() {
    if (this.obs?.running) {
      await this.obs.kill();
    }
    await this.#xvfb?.stop();
  }
}
