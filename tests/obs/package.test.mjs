import assert from "node:assert/strict";
import { mkdir, readdir, rm, writeFile } from "node:fs/promises";
import path from "node:path";
import { after, before, describe, it } from "node:test";
import { run } from "../../tools/obs/command.mjs";
import { fakeHelper, TestSession } from "./support/test-session.mjs";
import { version } from "./support/version.mjs";

const build = process.env.KESTRUNE_BUILD_DIR;

async function makePackages() {
  const folder = path.join(build, "packages");
  await rm(folder, { recursive: true, force: true });
  await run("cpack", ["--config", path.join(build, "CPackConfig.cmake")]);
  const names = (await readdir(folder)).filter((name) => /\.(deb|tar\.gz)$/.test(name)).sort();
  return names.map((name) => path.join(folder, name));
}

/** Installs the package with dpkg into `folder` as an empty system. */
async function installDeb(deb, folder) {
  await mkdir(path.join(folder, "var", "lib", "dpkg", "updates"), { recursive: true });
  await mkdir(path.join(folder, "var", "lib", "dpkg", "info"));
  await writeFile(path.join(folder, "var", "lib", "dpkg", "status"), "");
  // Minimal systems configure dpkg to skip documentation.
  const flags = [`--root=${folder}`, "--force-not-root", "--force-depends", "--path-include=/usr/share/doc/kestrune/*"];
  await run("dpkg", [...flags, "--install", deb], {
    // dpkg needs programs in sbin.
    env: { ...process.env, PATH: `${process.env.PATH}:/usr/sbin:/sbin` },
  });
}

/** Where this system's OBS looks for modules. */
async function moduleFolder() {
  const owned = await run("dpkg-query", ["--search", "*/obs-plugins/obs-websocket.so"]);
  return path.dirname(owned.trim().replace(/^.*: /, ""));
}

/** The files in `folder`, as relative paths. */
async function filesIn(folder) {
  const entries = await readdir(folder, { recursive: true, withFileTypes: true });
  const files = entries.filter((entry) => entry.isFile());
  return files.map((entry) => path.relative(folder, path.join(entry.parentPath, entry.name))).sort();
}

describe("the packages for Linux", () => {
  let deb;
  let archive;

  before(async () => {
    [archive, deb] = await makePackages();
  });

  it("have the version in their names", () => {
    assert.equal(path.basename(archive), `kestrune-${version}-linux-x86_64.tar.gz`);
    assert.equal(path.basename(deb), `kestrune_${version}_amd64.deb`);
  });

  it("require an OBS that accepts the module, and its Qt", async () => {
    const qt = /^\d+\.\d+/.exec(await run("dpkg-query", ["--show", "--showformat=${Version}", "qt6-base-dev"]));
    const fields = await run("dpkg-deb", ["--field", deb, "Package", "Version", "Architecture", "Depends"]);
    assert.deepEqual(fields.trim().split("\n"), [
      "Package: kestrune",
      `Version: ${version}`,
      "Architecture: amd64",
      `Depends: obs-studio (>= 31.1), libqt6widgets6 (>= ${qt}) | libqt6widgets6t64 (>= ${qt})`,
    ]);
  });

  const unpackers = [
    ["deb", (folder) => installDeb(deb, folder), "usr"],
    ["tar.gz", (folder) => run("tar", ["--extract", "--file", archive, "--directory", folder]), ""],
  ];
  for (const [kind, unpack, prefix] of unpackers) {
    describe(`the ${kind}`, () => {
      const folder = path.join(build, "packages", `unpacked-${kind}`, prefix);
      let files;
      let test;

      before(async () => {
        await mkdir(folder, { recursive: true });
        await unpack(path.join(build, "packages", `unpacked-${kind}`));
        files = await filesIn(folder);
        test = await TestSession.create(`package-${kind}`, {
          helper: fakeHelper("recording-helper"),
          withModule: false,
          // The system owns OBS's own folders; these variables add one more.
          extraEnv: {
            OBS_PLUGINS_PATH: path.join(folder, path.dirname(files[0])),
            OBS_PLUGINS_DATA_PATH: path.join(folder, "share", "obs", "obs-plugins"),
          },
        });
      });
      after(() => test?.close());

      it("holds the module where OBS looks for it, its data and its licence, and nothing else", async () => {
        assert.equal(path.join("/usr", files[0]), path.join(await moduleFolder(), "kestrune.so"));
        assert.deepEqual(files.slice(1), [
          "share/doc/kestrune/copyright",
          "share/obs/obs-plugins/kestrune/locale/en-US.ini",
        ]);
      });

      it("is loaded by OBS", async () => {
        await test.startObs();
        await test.session.obs.waitForLine(new RegExp(`\\[kestrune\\] Kestrune loaded \\(version ${version}\\)`));
        await test.dock.waitForWidget({ name: "clipBtn" });
        const troubles = test.session.obs.lines().filter((line) => /Failed to load .*kestrune/i.test(line));
        assert.deepEqual(troubles, []);
      });

      it("lets OBS exit cleanly", async () => {
        assert.equal((await test.stopObs()).exitCode, 0);
      });
    });
  }
});
