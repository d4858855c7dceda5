// A whole OBS session: home folder, display, OBS itself and its input, for the demo and the end-to-end tests alike.

import { mkdir, rm } from "node:fs/promises";
import os from "node:os";
import path from "node:path";
import { Input } from "./input.mjs";
import { makeTestVideo } from "./media.mjs";
import { ObsHome } from "./obs-home.mjs";
import { ObsProcess } from "./obs-process.mjs";
import { screenshot } from "./screenshot.mjs";
import { screen, startXvfb } from "./xvfb.mjs";

export class ObsSession {
  #xvfb;
  #env;
  #starts = 0;

  /** The running OBS, undefined before `startObs`. */
  obs;

  /** Use `create`. */
  constructor(folder, home, xvfb, display, env) {
    this.folder = folder;
    this.home = home;
    this.display = display;
    this.input = new Input(display);
    this.#xvfb = xvfb;
    this.#env = env;
  }

  /**
   * Makes a session in `folder`, which is emptied first.
   *
   * @param settings  what `ObsHome.seed` takes, without the video: a test picture is made.
   * @param env       environment variables for OBS besides the caller's own.
   * @param display   X display to use; a virtual one is started when it is undefined.
   */
  static async create({ folder, settings, env = {}, display }) {
    await rm(folder, { recursive: true, force: true });
    await mkdir(folder, { recursive: true });
    const video = path.join(folder, "test-picture.mp4");
    await makeTestVideo(video, { ...settings.canvas, seconds: 20 });
    const home = new ObsHome(path.join(folder, "home"));
    await home.seed({ ...settings, video });
    const xvfb = display ? undefined : await startXvfb(path.join(folder, "xvfb.log"));
    return new ObsSession(folder, home, xvfb, display ?? xvfb.display, env);
  }

  /** Starts OBS (with `flags` on its command line) and waits until it has loaded its modules and scenes. */
  async startObs(flags = []) {
    this.#starts += 1;
    this.obs = new ObsProcess(
      {
        ...process.env,
        // A person's X authority file lies in the home folder that OBS is not given.
        XAUTHORITY: process.env.XAUTHORITY ?? path.join(os.homedir(), ".Xauthority"),
        LIBGL_ALWAYS_SOFTWARE: "1",
        QT_QPA_PLATFORM: "xcb",
        DISPLAY: this.display,
        ...this.home.environment(),
        ...this.#env,
      },
      path.join(this.folder, `obs-${this.#starts}.log`),
      flags,
    );
    await this.obs.waitForLine(/Loaded scenes:/);
    if (this.#xvfb) {
      // Without a window manager nobody puts the window where it can be seen whole.
      await this.input.placeWindow("^OBS ", { x: 0, y: 0, ...screen });
    }
  }

  /** Picture of the display (or of an area of it) as `name`.png in the session's folder; returns its path. */
  async screenshot(name, area) {
    return screenshot(this.display, path.join(this.folder, `${name}.png`), area);
  }

  /** Ends everything that still runs; safe to call at any time. */
  async close() {
    if (this.obs?.running) {
      await this.obs.kill();
    }
    await this.#xvfb?.stop();
  }
}
