// A network port for obs-websocket that nobody else uses.

import { once } from "node:events";
import { createServer } from "node:net";

/** Number of a TCP port of this machine that is free at this moment. */
export async function findFreePort() {
  const server = createServer().listen(0, "127.0.0.1");
  await once(server, "listening");
  const { port } = server.address();
  server.close();
  await once(server, "close");
  return port;
}
