// What developers are given: the container's packages, the hooks and tasks, and the checks.

import assert from "node:assert/strict";
import { execFile } from "node:child_process";
import { appendFile, chmod, copyFile, mkdir, readFile, symlink, writeFile } from "node:fs/promises";
import path from "node:path";
import { describe, it } from "node:test";
import { run } from "../../tools/obs/command.mjs";
import { temporaryFolder } from "./support/helper-check.mjs";

const checkout = path.resolve(import.meta.dirname, "..", "..");
const read = (name) => readFile(path.join(checkout, name), "utf8");

/** Runs a command in the checkout; answers its exit code and all that it printed. */
function outcome(program, args, env = {}) {
  return new Promise((resolve) => {
    execFile(program, args, { cwd: checkout, env: { ...process.env, ...env } }, (failure, output, errorOutput) => {
      resolve({ exitCode: failure ? failure.code : 0, output: output + errorOutput });
    });
  });
}

describe("the development container", () => {
  it("installs what the build root holds", async (t) => {
    const folder = await temporaryFolder(t);
    await writeFile(path.join(folder, "apt-get"), `#!/bin/sh\necho "$@" >>'${folder}/calls'\n`, { mode: 0o755 });
    const [, sources, target] = /^COPY (.+) (\S+)$/m.exec(await read(".devcontainer/Dockerfile"));
    const [, install] = /^RUN (.*)$/m.exec(await read(".devcontainer/Dockerfile"));
    await mkdir(path.join(folder, "lists"));
    for (const source of sources.split(" ")) {
      await copyFile(path.join(checkout, source), path.join(folder, "lists", path.basename(source)));
    }
    await run("sh", ["-c", install.replaceAll(target, `'${folder}'/lists/`)], {
      env: { ...process.env, PATH: `${folder}:${process.env.PATH}` },
    });
    const calls = (await readFile(path.join(folder, "calls"), "utf8")).trim().split("\n");
    assert.equal(calls.length, 2);
    assert.equal(calls[0], "update");
    const [, packages] = /^install --yes --no-install-recommends (.*)$/.exec(calls[1]);

    const lister = `cache=/nowhere checkout='${checkout}'; source '${checkout}/tools/root/make.sh'
      select_developer_root; root_packages`;
    const wanted = (await run("bash", ["-c", lister])).trim().split("\n");
    assert.ok(wanted.length > 10);
    assert.deepEqual(packages.split(" ").sort(), wanted.sort());
  });

  it("needs no build root: ./run works on the machine itself", async () => {
    const { exitCode, output } = await outcome("./run", ["shell", "sh", "-c", "echo $KESTRUNE_ROOT_ID"]);
    assert.equal(exitCode, 0, output);
    assert.match(output, /^machine [0-9a-f]{12}\n$/);
  });
});

describe("hooks and tasks", () => {
  it("call checks that there are", async () => {
    const hooks = [...(await read(".pre-commit-config.yaml")).matchAll(/entry: \.\/run lint (\w+)$/gm)];
    assert.deepEqual(
      hooks.map(([, check]) => check),
      ["format", "cpp", "cmake", "scripts", "shell", "workflows", "spelling"],
    );
    const help = await run("bash", [path.join(checkout, "run"), "help"]);
    hooks.forEach(([, check]) => assert.ok(help.includes(`[${check}]`), `./run help lacks ${check}`));
  });

  it("call tasks that there are", async () => {
    const { tasks } = JSON.parse(await read(".vscode/tasks.json"));
    const settings = JSON.parse(await read(".vscode/settings.json"));
    assert.equal(settings["clangd.path"], "${workspaceFolder}/run");
    const called = tasks.map(({ command }) => /^\.\/run (\S+)/.exec(command)[1]);
    const help = await run("bash", [path.join(checkout, "run"), "help"]);
    for (const task of [...called, settings["clangd.arguments"][0]]) {
      assert.match(help, new RegExp(`^\\s*\\./run ${task}\\b`, "m"));
    }
  });
});

describe("lint", () => {
  const ours = [
    "tools/lint.sh",
    "tools/sources.sh",
    "tools/formatters.sh",
    "tools/install-node-modules.sh",
    ".clang-format",
    ".cmake-format.yaml",
    ".codespellrc",
    ".prettierrc.json",
  ];

  /** A repository of its own with our checks and these files; answers what lint makes of it. */
  async function lint(t, files, args) {
    const folder = await temporaryFolder(t);
    await mkdir(path.join(folder, "tools"));
    for (const name of ours) {
      await copyFile(path.join(checkout, name), path.join(folder, name));
    }
    await symlink(path.join(checkout, "tools", "lint"), path.join(folder, "tools", "lint"));
    for (const [name, text] of Object.entries(files)) {
      await mkdir(path.join(folder, path.dirname(name)), { recursive: true });
      await writeFile(path.join(folder, name), text);
      await chmod(path.join(folder, name), 0o755);
    }
    await run("git", ["init", "--quiet", folder]);
    await appendFile(path.join(folder, ".git", "info", "exclude"), "/tools/lint\n");
    return outcome("sh", ["-c", `cd '${folder}' && exec tools/lint.sh ${args}`], { GIT_CONFIG_COUNT: "0" });
  }

  const wrong = {
    "a.cpp": "int  a = 1;\n",
    "a.cmake": "function(Wrong)\nendfunction()\n",
    "a.mjs": "const a = 1;\n",
    "a.sh": "#!/usr/bin/env bash\necho $1\n",
    ".github/workflows/a.yaml":
      "on: push\njobs:\n  a:\n    runs-on: ubuntu-24.04\n    steps:\n      - run: echo ${{ os }}\n",
    // Spelt so that this file passes itself.
    "a.md": `I have rec${"ie"}ved it.\n`,
  };
  const all = "format cmake scripts shell workflows spelling";

  it("finds what is wrong, each check its own", async (t) => {
    const { exitCode, output } = await lint(t, wrong, all);
    assert.equal(exitCode, 1);
    assert.match(
      output,
      /== Summary\nformat: FAILED\ncmake: FAILED\nscripts: FAILED\nshell: FAILED\nworkflows: FAILED\nspelling: FAILED\n/,
    );
    assert.match(output, /undefined variable "os"/);
    assert.match(output, /'a' is assigned a value but never used/);
  });

  it("knows a formatter for each language", async (t) => {
    const unformatted = {
      "a.cpp": "int  a = 1;\n",
      "a.hpp": "int  a = 1;\n",
      "a.cmake": "set(a  1)\n",
      "CMakeLists.txt": "set(a  1)\n",
      "a.mjs": "export const a  = 1;\n",
      program: "#!/usr/bin/env node\nexport const a  = 1;\n",
    };
    for (const [name, text] of Object.entries(unformatted)) {
      const { output } = await lint(t, { [name]: text }, "format");
      assert.match(output, /== Summary\nformat: FAILED\n/, name);
      const formatted = await lint(t, { [name]: text.replace("  ", " ") }, "format");
      assert.match(formatted.output, /== Summary\nformat: passed\n/, `${name}: ${formatted.output}`);
    }
  });

  it("looks at the named files alone", async (t) => {
    const { exitCode, output } = await lint(t, { ...wrong, "b.md": "All is well.\n" }, `${all} a.sh b.md`);
    assert.equal(exitCode, 1);
    assert.match(
      output,
      /== Summary\nformat: passed\ncmake: passed\nscripts: passed\nshell: FAILED\nworkflows: passed\nspelling: passed\n/,
    );
  });

  it("runs the named check alone", async (t) => {
    const { exitCode, output } = await lint(t, wrong, "spelling a.cpp");
    assert.equal(exitCode, 0);
    assert.match(output, /== Summary\nspelling: passed\n$/);
  });

  it("knows shell scripts by their first line, and files by whichever path", async (t) => {
    const scripts = { helper: wrong["a.sh"], program: `#!/usr/bin/env node\necho $1\n` };
    const { exitCode, output } = await lint(t, scripts, "shell ./helper ././program");
    assert.equal(exitCode, 1);
    assert.match(output, /In helper line 2:/);
    assert.doesNotMatch(output, /In program/);
  });

  it("says which files none of the checks is about", async (t) => {
    const { exitCode, output } = await lint(t, wrong, "format ./a.cpp a.md");
    assert.equal(exitCode, 1);
    assert.match(output, /== Summary\nformat: FAILED\nlint: nothing looked at 'a.md'; the checks were: format\n/);
  });

  it("refuses what is neither a file nor a check", async (t) => {
    const { exitCode, output } = await lint(t, wrong, "style");
    assert.equal(exitCode, 2);
    assert.match(output, /^lint: 'style' is neither a file nor a check/);
  });
});
