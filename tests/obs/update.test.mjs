import assert from "node:assert/strict";
import { createHash } from "node:crypto";
import { mkdir, readFile, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { errorColour, informationColour } from "../../tools/obs/dock.mjs";
import { sleep, waitFor } from "../../tools/obs/wait.mjs";
import { artefactsFolder, fakeHelper, fakeRunner, TestSession, fakeUpdateRunner } from "./support/test-session.mjs";

const green = /^QPushButton\{background:#1d2a14;color:#b8ff6a;.*QPushButton:disabled\{color:#b8ff6a\}$/;
const red = /^QPushButton\{background:#2a1418;color:#ff8a9a;[^}]*\}$/;
const offer = "Update available v1.0.7 — Update now";
const notConnected = "Not connected. Click Connect account (one click in your browser).";

async function createSession(name, extraEnv = {}) {
  return TestSession.create(name, {
    helper: fakeHelper("recording-helper"),
    extraEnv: {
      KESTRUNE_SAMPLE_HELPER_UPDATES: releaseFolder(name),
      // Twenty steps, each long enough to notice.
      KESTRUNE_SAMPLE_HELPER_DOWNLOAD_MS: "4000",
      ...extraEnv,
    },
  });
}

function releaseFolder(name) {
  return path.join(artefactsFolder(name), "release");
}

/** Offers version 1.0.7; `installer` holds more members of its installer. */
async function offerRelease(name, installer = {}, release = {}) {
  const folder = releaseFolder(name);
  await mkdir(folder, { recursive: true });
  const content = JSON.stringify({ version: "1.0.7", ...installer });
  const sha256 = createHash("sha256").update(content).digest("hex");
  await writeFile(path.join(folder, "setup.json"), content);
  await writeFile(
    path.join(folder, "release.json"),
    JSON.stringify({ version: "1.0.7", notes: "Fixes captions.", installer: "setup.json", sha256, ...release }),
  );
}

/**
 * Waits for the text on the update button and the status line, checks everything about the state, and takes the
 * screenshot `picture`.
 */
async function waitForState(test, state, text, picture = state) {
  const failed = state === "error";
  await test.dock.waitForStatus(text, failed ? errorColour : informationColour);
  const button = await test.dock.widget({ name: "updateBtn" });
  assert.deepEqual([button.text, button.toolTip], [text, text]);
  assert.deepEqual([button.visible, button.enabled], [true, failed]);
  assert.match(button.styleSheet, failed ? red : green);
  await test.session.screenshot(picture);
}

describe("an update with a runner in place of the elevated installer", () => {
  const name = "update";
  const manifest = path.join(artefactsFolder(name), "manifest.json");
  const mayRun = path.join(artefactsFolder(name), "installer-may-run");
  let test;

  before(async () => {
    test = await createSession(name, {
      KESTRUNE_MANIFEST: manifest,
      KESTRUNE_UPDATE_RUNNER: fakeRunner("held-runner"),
      KESTRUNE_TEST_UPDATE_RUNNER: fakeUpdateRunner,
    });
    await writeFile(manifest, JSON.stringify({ version: "1.0.6", name: "kestrune" }));
    await offerRelease(name, { exit: 5 });
    await test.startObs();
    await test.waitForStatusQueries();
  });
  after(() => test?.close());

  async function retryInto(text, picture) {
    await test.dock.click({ name: "updateBtn" });
    await waitForState(test, "error", text, picture);
  }

  it("is offered without changing the status line", async () => {
    await test.dock.waitForStatus(notConnected);
    const button = await test.dock.waitForWidget({ name: "updateBtn", visible: true });
    assert.deepEqual([button.text, button.toolTip, button.enabled], [offer, "Fixes captions.", true]);
    assert.match(button.styleSheet, green);
    await test.dock.waitForStatus(notConnected);
    await test.session.screenshot("available");
  });

  it("is downloaded after a click, with the percentage on button and status line", async () => {
    await test.dock.click({ name: "updateBtn" });
    const percentages = [];
    let clickedAgain = false;
    await waitFor("the download to end", async () => {
      const { widgets } = await test.dock.snapshot();
      const button = widgets.find((widget) => widget.name === "updateBtn");
      const match = /^Downloading v1\.0\.7… (\d+)%$/.exec(button.text);
      if (!match) {
        return button.text !== offer;
      }
      const status = widgets.find((widget) => widget.name === "status");
      assert.deepEqual([button.enabled, button.toolTip, status.text], [false, button.text, button.text]);
      assert.equal(status.styleSheet, informationColour);
      assert.match(button.styleSheet, green);
      percentages.push(Number(match[1]));
      if (!clickedAgain && percentages.at(-1) >= 30) {
        clickedAgain = true;
        await test.session.screenshot("downloading");
        await test.session.input.click(button.x + 20, button.y + 5);
      }
      return false;
    });
    assert.deepEqual(
      percentages,
      percentages.toSorted((left, right) => left - right),
    );
    assert.ok(new Set(percentages).size > 3, `only these percentages were seen: ${percentages}`);
    assert.ok(percentages.at(-1) <= 100);
    // Clicks during the download are ignored.
    assert.equal(clickedAgain, true);
    assert.equal((await test.helperCalls("--download-update")).length, 1);
  });

  it("is being installed for as long as the installer runs", async () => {
    await waitForState(test, "installing", "Installing v1.0.7… (approve the Windows prompt)");
  });

  it("names the exit code of an installer that fails", async () => {
    await writeFile(mayRun, "");
    await waitForState(
      test,
      "error",
      "Update failed: the installer exited with code 5. Nothing changed until it succeeds. Retry update",
      "error-exit-code",
    );
  });

  it("reports a crashed installer as exit code -1", async () => {
    await offerRelease(name, { crash: true });
    await retryInto(
      "Update failed: the installer exited with code -1. Nothing changed until it succeeds. Retry update",
      "error-crash",
    );
  });

  it("names the old version when the installer did not replace it", async () => {
    await offerRelease(name, { keep: true });
    await retryInto(
      "Update failed: the installer finished but v1.0.6 is still installed. Retry update",
      "error-version-kept",
    );
  });

  it("shows why a download failed", async () => {
    await offerRelease(name, {}, { sha256: "0".repeat(64) });
    await retryInto("Update failed: the downloaded installer is damaged. Retry update", "error-damaged-download");
  });

  it("says when the offer is gone", async () => {
    await rm(path.join(releaseFolder(name), "release.json"));
    await retryInto("No newer version is available any more. Retry update", "error-offer-gone");
  });

  it("is done, for good, when the manifest names the offered version", async () => {
    await offerRelease(name);
    await test.dock.click({ name: "updateBtn" });
    const done = "Update installed (v1.0.7). Restart OBS to finish.";
    await waitForState(test, "done", done);
    assert.deepEqual(JSON.parse(await readFile(manifest, "utf8")), { version: "1.0.7", name: "kestrune" });

    const downloads = (await test.helperCalls("--download-update")).length;
    await test.dock.click({ name: "updateBtn" });
    await sleep(2000);
    assert.equal((await test.helperCalls("--download-update")).length, downloads);
    assert.equal((await test.dock.widget({ name: "updateBtn" })).text, done);
  });

  it("lets OBS exit cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});

describe("an update on a system without elevated installers", () => {
  const name = "update-unsupported";
  let test;

  before(async () => {
    test = await createSession(name);
    await offerRelease(name);
    await test.startObs();
    await test.waitForStatusQueries();
  });
  after(() => test?.close());

  it("fails to start the installer", async () => {
    await test.dock.waitForWidget({ name: "updateBtn", visible: true, text: offer });
    await test.dock.click({ name: "updateBtn" });
    await waitForState(test, "error", "Update failed: couldn't start the installer (error 0). Retry update");
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
