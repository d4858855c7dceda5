// obs-websocket, seen from a remote control.

import OBSWebSocket from "obs-websocket-js";
import { waitFor } from "./wait.mjs";

/** Connects to the obs-websocket server on this machine's `port`, waiting until it listens. */
export async function connectWebsocket(port, password) {
  const client = new OBSWebSocket();
  await waitFor(`obs-websocket on port ${port}`, () =>
    client.connect(`ws://127.0.0.1:${port}`, password).then(
      () => true,
      () => false,
    ),
  );
  return client;
}
