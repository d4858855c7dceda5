// A virtual X display, so that key presses and clicks disturb nobody.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { open } from "node:fs/promises";

/** Default size in pixels. */
export const screen = { width: 1280, height: 860 };

/**
 * Starts Xvfb with a screen of `size` ({width, height} in pixels) on a free display number. It logs to `logFile`.
 * Throws if it does not start.
 */
export async function startXvfb(logFile, size) {
  const log = await open(logFile, "w");
  const server = spawn(
    "Xvfb",
    // Without -noreset the server restarts when its last client leaves, and a client that connects then (a restarted
    // OBS) fails.
    ["-displayfd", "3", "-noreset", "-nolisten", "tcp", "-screen", "0", `${size.width}x${size.height}x24`],
    { stdio: ["ignore", log.fd, log.fd, "pipe"] },
  );
  const exited = once(server, "exit");
  await log.close();
  const number = await Promise.race([
    once(server.stdio[3], "data").then(([data]) => data.toString().trim()),
    exited.then(([code]) => Promise.reject(new Error(`Xvfb ended with code ${code}, see ${logFile}`))),
  ]);
  return {
    /** For the variable DISPLAY. */
    display: `:${number}`,
    async stop() {
      server.kill("SIGTERM");
      await exited;
    },
  };
}
