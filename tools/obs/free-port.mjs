import { once } from "node:events";
import { createServer } from "node:net";

/** A TCP port that is free now. */
export async function findFreePort() {
  const server = createServer().listen(0, "127.0.0.1");
  await once(server, "listening");
  const { port } = server.address();
  server.close();
  await once(server, "close");
  return port;
}
