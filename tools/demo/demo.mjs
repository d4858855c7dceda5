// demo.mjs [--headless]: the main job in the real OBS, configured under build/demo/. With a display and without
// --headless, OBS stays open for the user; otherwise real key presses make one Short, and the exit code is 0 only if it
// is correct. KESTRUNE_BUILD_DIR names the build folder.

import { execFile } from "node:child_process";
import { readdir } from "node:fs/promises";
import path from "node:path";
import { parseArgs, promisify } from "node:util";
import { decodeFully, probeVideo } from "../obs/media.mjs";
import { ObsSession } from "../obs/session.mjs";
import { sleep, waitFor } from "../obs/wait.mjs";

const clipSeconds = 30;
const hotkey = { shift: true, control: true, alt: false, command: false, key: "OBS_KEY_C" };
const hotkeyKeys = ["control", "shift", "c"];

const checkout = path.resolve(import.meta.dirname, "..", "..");
const folder = path.join(checkout, "build", "demo");
const shortsFolder = path.join(folder, "Shorts");

const { headless } = parseArgs({ options: { headless: { type: "boolean" } } }).values;
const buildFolder = process.env.KESTRUNE_BUILD_DIR;
if (!buildFolder) {
  console.error("demo: KESTRUNE_BUILD_DIR must name the build folder");
  process.exit(2);
}
const sampleHelper = path.join(buildFolder, "sample-helper", "sample-helper");
const helperEnvironment = {
  KESTRUNE_SAMPLE_HELPER_HOME: path.join(folder, "session", "sample-helper"),
  KESTRUNE_SAMPLE_HELPER_OUTPUT: shortsFolder,
  // Nobody is there to consent to reading the chat.
  KESTRUNE_SAMPLE_HELPER_CONSENT_MS: "0",
};

function say(text) {
  console.log(`demo: ${text}`);
}

async function shorts() {
  const names = await readdir(shortsFolder).catch(() => []);
  return names.filter((name) => name.endsWith(".mp4")).map((name) => path.join(shortsFolder, name));
}

async function createSession(display) {
  // A virtual display is drawn by the CPU, which also makes the Short.
  const canvas = display ? { width: 1280, height: 720, fps: 30 } : { width: 640, height: 360, fps: 30 };
  return ObsSession.create({
    folder: path.join(folder, "session"),
    settings: {
      canvas,
      modules: [path.join(buildFolder, "kestrune")],
      hotkey,
      preferences: { seconds: clipSeconds },
    },
    env: { KESTRUNE_HELPER: sampleHelper, ...helperEnvironment },
    display,
  });
}

/** Runs the sample helper; throws unless `isRight` accepts one of its events. */
async function askSampleHelper(args, isRight) {
  const { stdout } = await promisify(execFile)(sampleHelper, args, { env: { ...process.env, ...helperEnvironment } });
  const events = stdout
    .split("\n")
    .filter(Boolean)
    .map((line) => JSON.parse(line));
  if (!events.some(isRight)) {
    throw new Error(`the sample helper answered ${args[0]} with ${stdout}`);
  }
}

async function prepareHelper() {
  await askSampleHelper(["--link", "--no-browser"], ({ event }) => event === "linked");
  await askSampleHelper(["--chat-set", '{"enabled":true}'], ({ granted }) => granted);
}

/** Has the module enable the Replay Buffer, and restarts OBS, which applies the profile only at start. */
async function startReplayBuffer(session) {
  await session.startObs();
  await session.obs.waitForLine(/\[kestrune\] enabled Replay Buffer/);
  await session.obs.stop();
  await session.startObs();
  await session.obs.waitForLine(/==== Replay Buffer Start/);
}

/** Makes a Short with a real key press; returns its path and the screenshots'. */
async function makeShort(session) {
  const before = await shorts();
  const pictures = [await session.screenshot("1-before")];
  await session.input.press(...hotkeyKeys);
  await session.obs.waitForLine(/Wrote replay buffer to/);
  const helperWorks = async () => (await session.obs.childCommands()).some((line) => line.includes(" --process "));
  await waitFor("the helper to start", helperWorks, { every_ms: 50 });
  pictures.push(await session.screenshot("2-during"));

  say("the replay is saved; the sample helper makes the Short (10 to 120 s, depending on this machine)");
  await waitFor("the helper to finish", async () => !(await helperWorks()), { limit_ms: 600_000 });
  const made = (await shorts()).filter((file) => !before.includes(file));
  pictures.push(await session.screenshot("3-after"));
  if (made.length !== 1) {
    throw new Error(`${made.length} Shorts were made instead of one; see ${pictures.at(-1)}`);
  }
  return { short: made[0], pictures };
}

async function report(short, pictures) {
  const { width, height, seconds, bytes, videoCodec, audioCodec } = await probeVideo(short);
  await decodeFully(short);
  say(`Short: ${short}`);
  say(`${width}x${height}, ${seconds.toFixed(1)} s, ${(bytes / 1e6).toFixed(1)} MB, ${videoCodec} and ${audioCodec}`);
  for (const picture of pictures) {
    say(`screenshot: ${picture}`);
  }
  if (width !== 1080 || height !== 1920 || Math.abs(seconds - clipSeconds) > 1.5) {
    throw new Error(`the Short should be 1080x1920 and last ${clipSeconds} s`);
  }
}

async function runHeadless(session) {
  say(`filling the Replay Buffer (${clipSeconds + 3} s)`);
  await sleep((clipSeconds + 3) * 1000);
  say("pressing Ctrl+Shift+C and saving the replay (2 s)");
  const { short, pictures } = await makeShort(session);
  await session.obs.stop();
  await report(short, pictures);
}

/** The command that simulates a chat command. The sample helper may run only in the build root. */
function chatCommandLine() {
  const [home, program] = [helperEnvironment.KESTRUNE_SAMPLE_HELPER_HOME, sampleHelper].map((file) =>
    path.relative(checkout, file),
  );
  return `KESTRUNE_SAMPLE_HELPER_HOME=${home} ./run shell ${program} --say mod_ana`;
}

async function leaveToPerson(session) {
  const before = await shorts();
  say("OBS is yours. Its settings are in build/demo/session; your own are not touched.");
  say(`1. Wait about ${clipSeconds} s, the length of a clip.`);
  say('2. Click on the OBS window and press Ctrl+Shift+C, or click "Clip that" in the Kestrune dock on the right.');
  say("   Or simulate the chat command, in another terminal in this folder:");
  say(`   ${chatCommandLine()}`);
  say(`3. A minute later the vertical Short is in ${shortsFolder}.`);
  say("Close OBS to end the demo.");
  // Ctrl+C reaches OBS as well, which then exits by itself.
  process.once("SIGINT", () => {});
  await session.obs.exited;
  for (const short of await shorts()) {
    if (!before.includes(short)) {
      say(`Short: ${short}`);
    }
  }
}

async function main() {
  const display = headless ? undefined : process.env.DISPLAY;
  say("making a test picture and OBS settings in build/demo/session (5 s)");
  const session = await createSession(display);
  try {
    say("linking the account and turning on the chat command with the sample helper (3 s)");
    await prepareHelper();
    say("starting OBS, having the module enable the Replay Buffer, and restarting OBS (10 s)");
    await startReplayBuffer(session);
    await (display ? leaveToPerson(session) : runHeadless(session));
  } catch (error) {
    if (session.obs?.running) {
      say(`screenshot: ${await session.screenshot("failed")}`);
    }
    throw error;
  } finally {
    await session.close();
  }
}

try {
  await main();
} catch (error) {
  console.error(`demo: failed: ${error.message} (logs: ${path.join(folder, "session")})`);
  process.exitCode = 1;
}
