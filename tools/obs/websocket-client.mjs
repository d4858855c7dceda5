import OBSWebSocket from "obs-websocket-js";
import { waitFor } from "./wait.mjs";

/** Connects to obs-websocket on this port once it listens. */
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
