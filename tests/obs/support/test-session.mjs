// An OBS session for one test file: with the module and the test module, recorded helper runs, and no browser.

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

// Drawn without a graphics card, more pictures would take half of the tests' time.
const usualCanvas = { width: 640, height: 360, fps: 10 };
const module = path.join(buildFolder, "kestrune");
const sampleHelper = path.join(buildFolder, "sample-helper", "sample-helper");
const testModule = path.join(buildFolder, "tests", "support", "probe", "kestrune-probe");

/** The program that stands in for the elevated installer. */
export const fakeUpdateRunner = path.join(buildFolder, "tests", "support", "fake_update_runner", "fake_update_runner");

export function artefactsFolder(name) {
  return path.join(checkout, "build", "test-artifacts", name);
}

export function fakeHelper(name) {
  return path.join(import.meta.dirname, "helpers", name);
}

export function fakeRunner(name) {
  return path.join(import.meta.dirname, "runners", name);
}

/** The clip hotkey of test sessions, as OBS saves it and as keys to press. */
export const clipHotkey = {
  record: { shift: true, control: true, alt: false, command: false, key: "OBS_KEY_C" },
  keys: ["control", "shift", "c"],
};

export class TestSession {
  #withModule;
  #statusRunsBeforeStart = 0;
  #env;
  #password;

  /** Where obs-websocket listens, after `startObs`. */
  websocketAddress;

  /** The running OBS for a user and for a remote control, after `startObs`. */
  dock;
  websocket;

  /** Use `create`. */
  constructor(session, { helper, withModule, env, password }) {
    this.session = session;
    this.helper = helper;
    this.shorts = path.join(session.folder, "sample-helper", "Shorts");
    this.#withModule = withModule;
    this.#env = env;
    this.#password = password;
  }

  /**
   * Makes a session with its files in `artefactsFolder(name)`.
   *
   * @param helper      path of the helper program.
   * @param withModule  false to compare with OBS without the module.
   * @param canvas      {width, height, fps} of OBS's picture.
   * @param extraEnv    more environment variables for OBS and its helper.
   * @param password    obs-websocket's password; none if undefined.
   */
  static async create(name, { helper, withModule = true, canvas = usualCanvas, extraEnv = {}, password }) {
    const folder = artefactsFolder(name);
    const env = {
      PATH: `${path.join(checkout, "tools", "obs", "bin")}:${process.env.PATH}`,
      KESTRUNE_HELPER: helper,
      KESTRUNE_SAMPLE_HELPER_HOME: path.join(folder, "sample-helper"),
      // Long enough to notice on a busy machine.
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
    return new TestSession(session, { helper, withModule, env, password });
  }

  /** Enables the Replay Buffer before OBS starts, so that the module need not ask for a restart. */
  async switchReplayBufferOn() {
    await this.session.home.changeProfile((profile) => {
      for (const section of ["SimpleOutput", "AdvOut"]) {
        profile[section] = { ...profile[section], RecRB: "true", RecRBTime: "120" };
      }
    });
  }

  /** Starts OBS and connects to it. Throws if the module does not load. */
  async startObs() {
    this.#statusRunsBeforeStart = (await this.helperCalls("--status")).length;
    // A new port each time: the old one stays in use for a while after OBS closes the connections.
    const websocketPort = await findFreePort();
    await this.session.home.setWebsocketPort(websocketPort, this.#password);
    await this.session.startObs();
    if (this.#withModule) {
      await this.session.obs.waitForLine(/\[kestrune\] Kestrune loaded/, 5000);
    }
    this.websocketAddress = `ws://127.0.0.1:${websocketPort}`;
    this.websocket = await connectWebsocket(websocketPort, this.#password);
    this.dock = new Dock(this.websocket, this.session.input);
  }

  /** Waits until both status queries of OBS's start have ended: their answers overwrite the status line. */
  async waitForStatusQueries() {
    const runsOfStart = this.#statusRunsBeforeStart + 2;
    await waitFor("both status queries", async () => {
      return (await this.helperCalls("--status")).length >= runsOfStart;
    });
    await this.waitForIdleHelper();
  }

  /** Waits until the account is linked, the Replay Buffer runs, and OBS's start no longer changes the status line. */
  async waitForReadiness() {
    await this.dock.waitForWidget({ name: "clipBtn", enabled: true });
    await this.waitForStatusQueries();
    // The module checks again 1.5 s after starting the Replay Buffer.
    await sleep(1600);
    await this.dock.waitForStatus(readyStatus);
  }

  /**
   * Stops the Replay Buffer from OBS and waits until it can start again: OBS reports the stop a moment before its
   * output has stopped, and starts nothing in between.
   */
  async stopReplayBuffer() {
    await this.websocket.call("StopReplayBuffer");
    await this.dock.waitForStatus(
      "Replay Buffer stopped. Start it (Controls → Start Replay Buffer) to clip.",
      errorColour,
    );
    await waitFor("the output to stop", async () => {
      const { outputs } = await this.websocket.call("GetOutputList");
      return !outputs.find(({ outputName }) => outputName === "Replay Buffer").outputActive;
    });
  }

  /** Ends OBS like a desktop that logs out; returns what `ObsProcess.stop` does. */
  async stopObs() {
    await this.websocket.disconnect();
    return this.session.obs.stop();
  }

  /** The lines that a fake program wrote to this file in the session's folder, if any. */
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

  /** Runs the sample helper with OBS's environment; returns its events. */
  async runSampleHelper(...args) {
    const output = await run(sampleHelper, args, { env: { ...process.env, ...this.#env } });
    return output
      .split("\n")
      .filter(Boolean)
      .map((line) => JSON.parse(line));
  }

  /** Runs the session's helper to its end. */
  async runHelper(...args) {
    // Libraries that watch OBS do not belong in the helper.
    await run(this.helper, args, { env: { ...process.env, ...this.#env, LD_PRELOAD: undefined } });
  }

  /** The argument lists of all helper runs so far, optionally of one command. */
  async helperCalls(command) {
    const calls = (await this.notes("helper-calls")).map((line) => line.split("\t"));
    return command ? calls.filter(([first]) => first === command) : calls;
  }

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

  /** Takes a last screenshot and ends whatever still runs. */
  async close() {
    if (this.session.obs?.running) {
      await this.session.screenshot("last");
    }
    await this.session.close();
  }
}
