// An OBS on air: a test session that streams to a sink of its own.

import { mkdir, readdir, readFile, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { sleep, waitFor } from "../../../tools/obs/wait.mjs";
import { clipHotkey, fakeHelper, TestSession } from "../../obs/support/test-session.mjs";
import { descendants, figuresOf, signal } from "./processes.mjs";
import { Sink } from "./sink.mjs";

// Small and without a preview, so that most of the machine's time is left to the Shorts.
const canvas = { width: 320, height: 240, fps: 10 };
// The Replay Buffer does not share the stream's encoder: OBS 32.2 sometimes fails an assertion of its own
// (darray_pop_front) when it starts a second output on an encoder that runs.
const stream = {
  VBitrate: 500,
  UseAdvanced: true,
  Preset: "ultrafast",
  x264Settings: "keyint=20 rc-lookahead=0 sync-lookahead=0",
};

// Other programs may want the machine, too.
const limit_ms = 120_000;

/** Names of the two scene collections. */
export const collections = ["Untitled", "Other"];

export class Station {
  /** Use `create`. */
  constructor(test, sink, replays) {
    this.test = test;
    this.sink = sink;
    this.replays = replays;
  }

  /** `disks` has folders for replays and for Shorts. */
  static async create(name, { withModule, disks }) {
    const replays = path.join(disks.replays, name);
    await mkdir(replays);
    const test = await TestSession.create(name, {
      helper: fakeHelper("recording-helper"),
      withModule,
      canvas,
      extraEnv: { KESTRUNE_SAMPLE_HELPER_OUTPUT: disks.shorts },
    });
    const { home, folder } = test.session;
    test.shorts = disks.shorts;
    await test.switchReplayBufferOn();
    await home.changeProfile((profile) => {
      Object.assign(profile.SimpleOutput, stream, { FilePath: replays });
    });
    await home.changeUserSettings((settings) => {
      settings.BasicWindow.PreviewEnabled = false;
    });
    await home.changePreferences((preferences) => {
      Object.assign(preferences, { hotkey: [clipHotkey.record], hotkey_offered: true });
    });
    const collection = JSON.parse(await readFile(home.sceneFile, "utf8"));
    const other = path.join(path.dirname(home.sceneFile), `${collections[1]}.json`);
    await writeFile(other, JSON.stringify({ ...collection, name: collections[1] }));
    const sink = await Sink.start(path.join(folder, "sink.log"));
    return new Station(test, sink, replays);
  }

  /** Rejects when OBS ends; nothing that is asked of it is answered then. */
  async whileRunning() {
    const code = await this.test.session.obs.exited;
    throw new Error(`OBS ended with ${code}; see ${this.test.session.folder}`);
  }

  request(name, data) {
    return this.test.websocket.call(name, data);
  }

  /** Sends OBS's frames to the sink from now on. */
  async goOnAir() {
    const { server, key } = this.sink;
    await this.request("SetStreamServiceSettings", {
      streamServiceType: "rtmp_custom",
      streamServiceSettings: { server, key },
    });
    await this.request("StartStream");
    await this.#waitFor("the stream", async () => (await this.request("GetStreamStatus")).outputActive);
  }

  /** Ends the stream, then OBS; answers as `TestSession.stopObs`. */
  async goOffAir() {
    await this.request("StopStream");
    await this.#waitFor("the end of the stream", async () => !(await this.request("GetStreamStatus")).outputActive);
    return this.test.stopObs();
  }

  async isBufferActive() {
    return (await this.request("GetReplayBufferStatus")).outputActive;
  }

  /** As a person closes the message box that OBS shows when it cannot write; a click would end in it. */
  async closeMessages() {
    await this.test.session.input.press("escape");
  }

  /** Does nothing when it runs. */
  async startReplayBuffer() {
    if (await this.isBufferActive()) {
      return;
    }
    await this.request("StartReplayBuffer");
    await this.#waitFor("the Replay Buffer", () => this.isBufferActive());
    // It needs some frames.
    await sleep(4000);
  }

  async stopReplayBuffer() {
    await this.request("StopReplayBuffer");
    await this.#waitFor("the output to end", async () => {
      const { outputs } = await this.request("GetOutputList");
      return !outputs.find(({ outputName }) => outputName === "Replay Buffer").outputActive;
    });
  }

  async useCollection(sceneCollectionName) {
    await this.request("SetCurrentSceneCollection", { sceneCollectionName });
    await this.#waitFor(`the collection ${sceneCollectionName}`, async () => {
      // While OBS changes collections it answers nothing else.
      const list = await this.request("GetSceneCollectionList").catch(() => undefined);
      return list?.currentSceneCollectionName === sceneCollectionName;
    });
  }

  /** Waits until OBS runs nothing, neither the helper nor a program that writes a replay. */
  async waitForIdleChildren() {
    const isIdle = async () => (await this.test.session.obs.childCommands()).length === 0;
    await this.#waitFor("all that OBS runs to end", isIdle);
  }

  /** Paths of the saved replays, oldest first. */
  async savedReplays() {
    const names = (await readdir(this.replays)).filter((name) => name.endsWith(".mkv"));
    return names.sort().map((name) => path.join(this.replays, name));
  }

  async removeReplays() {
    await Promise.all((await this.savedReplays()).map((file) => rm(file)));
  }

  /** What OBS uses when it is at rest, and has counted so far. */
  async figures() {
    const stats = await this.request("GetStats");
    const stream = await this.request("GetStreamStatus");
    const figures = await figuresOf(this.test.session.obs.pid);
    for (let again = 0; again < 4; ++again) {
      // A helper run that asks for chat messages may begin at any time.
      await sleep(500);
      const { descriptors, threads } = await figuresOf(this.test.session.obs.pid);
      figures.descriptors = Math.min(figures.descriptors, descriptors);
      figures.threads = Math.min(figures.threads, threads);
    }
    return {
      ...figures,
      frames: stats.renderTotalFrames,
      notRendered: stats.renderSkippedFrames,
      notEncoded: stats.outputSkippedFrames,
      notSent: stream.outputSkippedFrames,
    };
  }

  #waitFor(what, condition) {
    return waitFor(what, condition, { limit_ms });
  }

  async close() {
    await this.test.close();
    await this.sink.stop();
  }
}

/** Stops all of the stations, with whatever they have started, for a while, as a suspended machine does. */
export async function suspend(stations, seconds) {
  const stopped = [];
  const stop = (pid) => {
    signal(pid, "SIGSTOP");
    stopped.push(pid);
  };
  try {
    // OBS first: what is stopped starts nothing more.
    stations.forEach(({ test }) => stop(test.session.obs.pid));
    for (const { test, sink } of stations) {
      (await descendants(test.session.obs.pid)).forEach(stop);
      stop(sink.pid);
    }
    await sleep(seconds * 1000);
  } finally {
    stopped.forEach((pid) => signal(pid, "SIGCONT"));
  }
}
