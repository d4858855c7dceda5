// OBS for one benchmark: without the end-to-end tests' module, and with obs-websocket only where asked for.

import path from "node:path";
import { findFreePort } from "../../tools/obs/free-port.mjs";
import { ObsSession } from "../../tools/obs/session.mjs";

// Few and small pictures: what OBS draws is not measured, and without a graphics card it takes much time.
const canvas = { width: 320, height: 180, fps: 10 };
const replayBuffer = { RecRB: "true", RecRBTime: "20" };

export const builtFolder = path.join(process.env.KESTRUNE_BUILD_DIR, "tests", "bench");
export const kestrune = path.join(process.env.KESTRUNE_BUILD_DIR, "kestrune");

/**
 * Makes a session with the Replay Buffer enabled and the clip hotkey F8, in a folder below build/bench.
 *
 * @param modules    folders of modules to load.
 * @param websocket  whether obs-websocket is enabled, with its server.
 * @param env        more environment variables for OBS and its helper.
 */
export async function createSession(name, { modules, websocket = false, env = {} }) {
  const folder = path.resolve("build", "bench", name);
  const session = await ObsSession.create({
    folder,
    settings: {
      canvas,
      modules,
      hotkey: { key: "OBS_KEY_F8" },
      preferences: { seconds: 30 },
      websocketPort: websocket ? await findFreePort() : undefined,
    },
    env: {
      KESTRUNE_HELPER: path.join(import.meta.dirname, "helpers", "bench-helper"),
      KESTRUNE_TEST_FOLDER: folder,
      ...env,
    },
  });
  await session.home.changeProfile((profile) => {
    profile.SimpleOutput = { ...profile.SimpleOutput, ...replayBuffer };
  });
  if (!websocket) {
    await session.home.disableModule("obs-websocket");
  }
  return session;
}
