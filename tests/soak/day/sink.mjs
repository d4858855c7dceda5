// Where a stream goes: ffmpeg, which takes it on this machine and throws it away.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { open } from "node:fs/promises";
import { findFreePort } from "../../../tools/obs/free-port.mjs";

export class Sink {
  #child;
  #log;
  #stopping = false;
  #ended;
  #frames = [];

  /** Use `start`. */
  constructor(port, log) {
    this.server = `rtmp://127.0.0.1:${port}/live`;
    this.key = "day";
    this.#log = log;
    this.#ended = this.#takeStreams();
  }

  /** Starts to listen; `logFile` takes ffmpeg's messages. */
  static async start(logFile) {
    return new Sink(await findFreePort(), await open(logFile, "w"));
  }

  /** Process id of the ffmpeg that listens now. */
  get pid() {
    return this.#child.pid;
  }

  /** The frames of each stream that has come so far. */
  get streams() {
    return this.#frames.filter((frames) => frames > 0);
  }

  async stop() {
    this.#stopping = true;
    this.#child.kill("SIGTERM");
    await this.#ended;
    await this.#log.close();
  }

  /** ffmpeg ends with its stream, and OBS may connect again. */
  async #takeStreams() {
    while (!this.#stopping) {
      await this.#takeStream();
    }
  }

  async #takeStream() {
    const input = ["-listen", "1", "-i", `${this.server}/${this.key}`];
    const output = ["-c", "copy", "-f", "null", "-"];
    this.#child = spawn("ffmpeg", ["-v", "error", "-nostdin", "-progress", "pipe:1", ...input, ...output], {
      stdio: ["ignore", "pipe", this.#log.fd],
    });
    const index = this.#frames.push(0) - 1;
    this.#child.stdout.setEncoding("utf8").on("data", (text) => {
      const frames = [...text.matchAll(/^frame=\s*(\d+)/gm)].at(-1);
      this.#frames[index] = frames ? Number(frames[1]) : this.#frames[index];
    });
    await once(this.#child, "close");
  }
}
