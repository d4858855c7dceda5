// Asks Kestrune for a clip and says how that went. First, in the same folder: npm install obs-websocket-js
// Then: OBS_PASSWORD="your password" node clip.mjs

const address = process.env.OBS_ADDRESS ?? "ws://127.0.0.1:4455";

/** What helps when obs-websocket, or the way to it, refuses with this code. */
const advice = {
  ERR_MODULE_NOT_FOUND: "First, in the same folder: npm install obs-websocket-js",
  4009: "The password is wrong or missing: see Tools > WebSocket Server Settings > Show Connect Info.",
  600: "OBS runs without Kestrune: look for it in the Docks menu.",
  207: "OBS is still starting, or already closing. Try again in a moment.",
};

// Something else may listen there and never answer.
setTimeout(() => {
  console.error(`No answer from ${address} in 10 s. Is that OBS?`);
  process.exit(1);
}, 10_000).unref();

try {
  const { default: OBSWebSocket } = await import("obs-websocket-js");
  const obs = new OBSWebSocket();
  await obs.connect(address, process.env.OBS_PASSWORD);
  const { responseData } = await obs.call("CallVendorRequest", { vendorName: "Kestrune", requestType: "ClipThat" });
  console.log(responseData);
  await obs.disconnect();
} catch ({ code, message }) {
  const unreachable = `Nothing answers at ${address}: start OBS and switch on its WebSocket server. ${message}`;
  console.error(advice[code] ?? (code > 0 && code < 1000 ? message : unreachable));
  process.exitCode = 1;
}
