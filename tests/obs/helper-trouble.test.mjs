import assert from "node:assert/strict";
import { rm, symlink } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { errorColour } from "../../tools/obs/dock.mjs";
import { artefactsFolder, fakeHelper, TestSession } from "./support/test-session.mjs";

describe("OBS with a helper in trouble", () => {
  let test;
  let helper;

  before(async () => {
    helper = path.join(artefactsFolder("helper-trouble"), "helper");
    test = await TestSession.create("helper-trouble", { helper });
    await symlink(fakeHelper("crashing-helper"), helper);
    await test.startObs();
  });
  after(() => test?.close());

  it("names the exit code of a helper that crashes", async () => {
    await test.dock.waitForStatus(
      "The Kestrune helper stopped unexpectedly (code 3). Details: %APPDATA%\\Kestrune\\logs\\helper.log",
      errorColour,
    );
    await test.session.screenshot("crashed");
  });

  it("says where to get a helper that is missing", async () => {
    // Earlier runs would still report the crash.
    await test.waitForIdleHelper();
    await rm(helper);
    await test.dock.click({ text: "Connect account" });
    await test.dock.waitForWidget({ text: "Connect account", enabled: false });
    await test.dock.waitForStatus(/^Kestrune helper missing\. Reinstall from https:\/\/[^ ]+\/addons$/, errorColour);
    assert.equal((await test.dock.widget({ name: "clipBtn" })).enabled, false);
    await test.session.screenshot("missing");
  });

  it("lets OBS exit cleanly", async () => {
    assert.equal((await test.stopObs()).exitCode, 0);
  });
});
