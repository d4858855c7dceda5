// An OBS session for one test file: the module and the test module loaded, helper runs noted, no browser needed.

import { readFile, readdir } from "node:fs/promises";
import path from "node:path";
import { run } from "../../../tools/obs/command.mjs";
import { Dock, errorColour, readyStatus } from "../../../tools/obs/dock.mjs";
import { findFreePort } from "../../../tools/obs/free-port.mjs";
import { ObsSession } from "../../../tools/obs/session.mjs";
import { sleep, waitFor } from "../../../tools/obs/wait.mjs";
import { connectWebsocket } from "../../../tools/obs/websocket-client.mjs";

const checkout = path.resolve(import.meta.dirname, "..", "..", "..");
const buildFolder = process.env.KESTRUNE_BUILD_DIR;
if (!buildFolder) {
  throw new Error("KESTRUNE_BUILD_DIR must name the build folder of the module");
}

const usualCanvas = { width: 640, height: 360, fps: 30 };
const module = path.join(buildFolder, "kestrune");
const sampleHelper = path.join(buildFolder, "sample-helper", "sample-helper");
const testModule = path.join(buildFolder, "tests", "support", "probe", "kestrune-probe");

/** Path of the program that stands in for the elevated installer. */
export const updateRunner = path.join(buildFolder, "tests", "support", "update_runner", "update_runner");

/** Folder that keeps the files of the session `name`. */
export function artefactsFolder(name) {
  return path.join(checkout, "build", "test-artifacts", name);
}

/** Path of a fake helper program by its name. */
export function fakeHelper(name) {
  return path.join(import.meta.dirname, "helpers", name);
}

/** Path of a fake update runner by its name. */
export function fakeRunner(name) {
  return path.join(import.meta.dirname, "runners", name);
}

/** The key combination that test sessions bind to the clip hotkey, as OBS saves it and as keys to press. */
export const clipHotkey = {
  record: { shift: true, control: true, alt: false, command: false, key: "OBS_KEY_C" },
  keys: ["control", "shift", "c"],
};

export class TestSession {
  #withModule;
  #statusRunsBeforeStart = 0;
  #env;

  /** The running OBS as a user and a remote control see it; both are there after `startObs`. */
  dock;
  websocket;

  /** Use `create`. */
  constructor(session, { helper, withModule, env }) {
    this.session = session;
    this.helper = helper;
    this.shorts = path.join(session.folder, "sample-helper", "Shorts");
    this.#withModule = withModule;
    this.#env = env;
  }

  /**
   * Makes a session whose files are kept in `artefactsFolder(name)`.
   *
   * @param helper      path of the helper program.
   * @param withModule  false to run OBS without the module, for comparisons.
   * @param canvas      {width, height, fps} of the picture that OBS makes.
   * @param extraEnv    environment variables for OBS and its helper besides those that every test session has.
   */
  static async create(name, { helper, withModule = true, canvas = usualCanvas, extraEnv = {} }) {
    const folder = artefactsFolder(name);
    const env = {
      PATH: `${path.join(checkout, "tools", "obs", "bin")}:${process.env.PATH}`,
      KESTRUNE_HELPER: helper,
      KESTRUNE_SAMPLE_HELPER_HOME: path.join(folder, "sample-helper"),
      // Long enough to be seen on a busy machine.
      KESTRUNE_SAMPLE_HELPER_LINK_MS: "4000",
      KESTRUNE_TEST_FOLDER: folder,
      KESTRUNE_TEST_SAMPLE_HELPER: sampleHelper,
      ...extraEnv,
    };
    const session = await ObsSession.create({
      folder,
      settings: {
        canvas,
        modules: withModule ? [module, testModule] : [testModule],
        hotkey: clipHotkey.record,
        preferences: { seconds: 30 },
      },
      env,
    });
    return new TestSession(session, { helper, withModule, env });
  }

  /** Has OBS make a Replay Buffer from its first start on, so that the module need not ask for a restart. */
  async switchReplayBufferOn() {
    await this.session.home.changeProfile((profile) => {
      for (const section of ["SimpleOutput", "AdvOut"]) {
        profile[section] = { ...profile[section], RecRB: "true", RecRBTime: "120" };
      }
    });
  }

  /** Starts OBS and connects to it. Throws when the module was to be loaded and did not load. */
  async startObs() {
    this.#statusRunsBeforeStart = (await this.helperCalls("--status")).length;
    // Not the port of an earlier start: it stays taken for a while when OBS has closed the connections itself.
    const websocketPort = await findFreePort();
    await this.session.home.setWebsocketPort(websocketPort);
    await this.session.startObs();
    if (this.#withModule) {
      await this.session.obs.waitForLine(/\[kestrune\] Kestrune loaded/, 5000);
    }
    this.websocket = await connectWebsocket(websocketPort);
    this.dock = new Dock(this.websocket, this.session.input);
  }

  /**
   * Waits until the account is linked, the Replay Buffer runs, and nothing that belongs to the start of OBS will change
   * the status line any more.
   */
  async waitForReadiness() {
    await this.dock.waitForWidget({ name: "clipBtn", enabled: true });
    const runsOfStart = this.#statusRunsBeforeStart + 2;
    await waitFor("both questions after the account", async () => {
      return (await this.helperCalls("--status")).length >= runsOfStart;
    });
    await this.waitForIdleHelper();
    // The module looks once more 1.5 s after it has started the Replay Buffer.
    await sleep(1600);
    await this.dock.waitForStatus(readyStatus);
  }

  /**
   * Stops the Replay Buffer by OBS's own control, and waits until OBS could start it again: OBS tells that it has stopped
   * a moment before its output has, and starts nothing in between.
   */
  async stopReplayBuffer() {
    await this.websocket.call("StopReplayBuffer");
    await this.dock.waitForStatus(
      "Replay Buffer stopped. Start it (Controls → Start Replay Buffer) to clip.",
      errorColour,
    );
    await waitFor("the output to end", async () => {
      const { outputs } = await this.websocket.call("GetOutputList");
      return !outputs.find(({ outputName }) => outputName === "Replay Buffer").outputActive;
    });
  }

  /** Ends OBS as a closing desktop session does; answers as `ObsProcess.stop`. */
  async stopObs() {
    await this.websocket.disconnect();
    return this.session.obs.stop();
  }

  /** The lines of a file that a fake program writes into the session's folder; none before it was written. */
  async notes(file) {
    try {
      return (await readFile(path.join(this.session.folder, file), "utf8")).split("\n").slice(0, -1);
    } catch (error) {
      if (error.code === "ENOENT") {
        return [];
      }
      throw error;
    }
  }

  /** Runs the sample helper beside OBS, on the same state; returns its events. */
  async runSampleHelper(...args) {
    const output = await run(sampleHelper, args, { env: { ...process.env, ...this.#env } });
    return output
      .split("\n")
      .filter(Boolean)
      .map((line) => JSON.parse(line));
  }

  /** Runs the session's own helper beside OBS to its end. */
  async runHelper(...args) {
    // What is loaded into OBS to watch it has no place in the helper.
    await run(this.helper, args, { env: { ...process.env, ...this.#env, LD_PRELOAD: undefined } });
  }

  /** The argument lists of all helper runs so far, or only of those with the given command. */
  async helperCalls(command) {
    const calls = (await this.notes("helper-calls")).map((line) => line.split("\t"));
    return command ? calls.filter(([first]) => first === command) : calls;
  }

  /** Waits until no helper run is in flight. */
  async waitForIdleHelper() {
    const isIdle = async () => (await this.session.obs.childCommands()).length === 0;
    await waitFor("all helper runs to end", isIdle);
  }

  /** Paths of the finished Shorts, oldest first. */
  async finishedShorts() {
    const names = await readdir(this.shorts).catch(() => []);
    return names
      .filter((name) => name.endsWith(".mp4"))
      .sort()
      .map((name) => path.join(this.shorts, name));
  }

  /** Ends whatever still runs, with a last picture of the screen. */
  async close() {
    if (this.session.obs?.running) {
      await this.session.screenshot("last");
    }
    await this.session.close();
  }
}
