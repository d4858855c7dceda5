// docs/examples/clip.mjs and clip.py where they cannot work. What the first does in OBS is in
// tests/obs/remote-control.test.mjs.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { once } from "node:events";
import { writeFile } from "node:fs/promises";
import { createServer } from "node:net";
import path from "node:path";
import { describe, it } from "node:test";
import { findFreePort } from "../../tools/obs/free-port.mjs";
import { placeClipScript, runClipScript } from "../support/clip-script.mjs";
import { temporaryFolder } from "./support/helper-check.mjs";

const pythonScript = path.resolve(import.meta.dirname, "..", "..", "docs", "examples", "clip.py");

/** Stands in for Python's simpleobsws, as it is when something else than obs-websocket answers. */
const refusingPackage = `
class Request:
    def __init__(self, *arguments):
        pass

class WebSocketClient:
    def __init__(self, **options):
        pass

    async def connect(self):
        raise Exception("server rejected WebSocket connection: HTTP 200")
`;

describe("a sample script says in one line what helps", () => {
  it("when OBS is off", async (t) => {
    const script = await placeClipScript(await temporaryFolder(t));
    const address = `ws://127.0.0.1:${await findFreePort()}`;
    const { exitCode, output, errorOutput } = await runClipScript(script, address);
    assert.match(
      errorOutput,
      new RegExp(`^Nothing answers at ${address}: start OBS and switch on its WebSocket server.*\n$`),
    );
    assert.equal(output, "");
    assert.equal(exitCode, 1);
  });

  it("when what listens there never answers", async (t) => {
    const server = createServer(() => {}).listen(0, "127.0.0.1");
    t.after(() => server.close());
    await once(server, "listening");
    const script = await placeClipScript(await temporaryFolder(t));
    const address = `ws://127.0.0.1:${server.address().port}`;
    const { exitCode, errorOutput } = await runClipScript(script, address);
    assert.equal(errorOutput, `No answer from ${address} in 10 s. Is that OBS?\n`);
    assert.equal(exitCode, 1);
  });

  it("when its package is missing", async (t) => {
    const script = await placeClipScript(await temporaryFolder(t), { installed: false });
    const { exitCode, output, errorOutput } = await runClipScript(script, "ws://127.0.0.1:4455");
    assert.equal(errorOutput, "First, in the same folder: npm install obs-websocket-js\n");
    assert.equal(output, "");
    assert.equal(exitCode, 1);
  });

  it("when the Python program's package is missing", () => {
    // -S: without installed packages.
    const { status, stdout, stderr } = spawnSync("python3", ["-S", pythonScript], { encoding: "utf8" });
    assert.equal(stderr, "First: pip install simpleobsws\n");
    assert.equal(stdout, "");
    assert.equal(status, 1);
  });

  it("when something else answers the Python program", async (t) => {
    const folder = await temporaryFolder(t);
    await writeFile(path.join(folder, "simpleobsws.py"), refusingPackage);
    const env = { ...process.env, PYTHONPATH: folder, OBS_ADDRESS: "ws://127.0.0.1:80" };
    const { status, stdout, stderr } = spawnSync("python3", ["-S", pythonScript], { encoding: "utf8", env });
    assert.match(stderr, /^Nothing answers at ws:\/\/127\.0\.0\.1:80: .* server rejected .*: HTTP 200\n$/);
    assert.equal(stdout, "");
    assert.equal(status, 1);
  });
});
