// A virtual X display of our own, so that real key presses and clicks disturb nobody.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { open } from "node:fs/promises";

/** Size of the virtual display, in pixels, unless a session asks for another. */
export const screen = { width: 1280, height: 860 };

/**
 * Starts Xvfb with a screen of `size` ({width, height}, in pixels) on a free display number; `logFile` takes its
 * messages. Throws when it does not come up.
 */
export async function startXvfb(logFile, size) {
  const log = await open(logFile, "w");
  const server = spawn(
    "Xvfb",
    // Without -noreset the server starts over when its last client leaves, and a client that connects at that
    // moment (OBS after a restart) fails.
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
    /** Value for the environment variable DISPLAY. */
    display: `:${number}`,
    /** Ends the server. */
    async stop() {
      server.kill("SIGTERM");
      await exited;
    },
  };
}
