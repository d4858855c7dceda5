// tools/check-helper on helpers that are right, and on its own command line.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { copyFile, mkdir, readdir, readFile, symlink, writeFile } from "node:fs/promises";
import path from "node:path";
import { describe, it } from "node:test";
import { futureCommand } from "../../tools/helper-kit/commands.mjs";
import { allCommands } from "../../tools/helper-kit/schema.mjs";
import {
  checkHelper,
  checkLines,
  checkout,
  runProgram,
  temporaryFolder,
  writeHelper,
} from "./support/helper-check.mjs";

const sampleHelper = path.join(process.env.KESTRUNE_BUILD_DIR, "sample-helper", "sample-helper");
const minimalHelper = path.join(checkout, "docs", "examples", "minimal-helper.py");
const everything = [...allCommands, futureCommand];

function assertVerdict(output, command, verdict) {
  assert.ok(output.split("\n").includes(`${verdict.padEnd(10)}${command}`), output);
}

describe("check-helper and the sample helper", () => {
  it("finds nothing wrong with any command", async (t) => {
    const home = await temporaryFolder(t);
    const { exitCode, output } = await checkHelper([sampleHelper, "--all"], { KESTRUNE_SAMPLE_HELPER_HOME: home });
    everything.forEach((command) => assertVerdict(output, command, "ok"));
    assert.match(output, /\nerrors: 0, warnings: 0, left out: 0, not run: none\n$/);
    assert.equal(exitCode, 0);
    const shorts = (await readdir(path.join(home, "Shorts"))).map((name) => path.join(home, "Shorts", name));
    assert.equal(shorts.length, 3);
    shorts.forEach((short) => assert.ok(output.includes(`\nnew Short: ${short}\n`), output));
  });

  it("leaves an account alone unless asked", async (t) => {
    const home = await temporaryFolder(t);
    await writeFile(path.join(home, "account.json"), `{"link":"linked"}`);
    const { exitCode, output } = await checkHelper([sampleHelper], { KESTRUNE_SAMPLE_HELPER_HOME: home });
    assert.match(output, /not run: --link --chat-set --download-update --process\n$/);
    assert.match(output, /\nskipped {3}--process: an account is linked, the Short may be uploaded; only with --all/);
    assert.equal(exitCode, 0);
    assert.deepEqual(await readdir(path.join(home, "Shorts")), []);
  });
});

describe("check-helper and the minimal helper", () => {
  it("finds nothing wrong with what it does, and names what it leaves out", async (t) => {
    const home = await temporaryFolder(t);
    const { exitCode, output } = await checkHelper([minimalHelper, "--all"], { HOME: home });
    ["--status", "--recent", "--process", futureCommand].forEach((command) => assertVerdict(output, command, "ok"));
    const withoutEvent = [...output.matchAll(/^left out {2}(--[a-z-]+): /gm)].map(([, command]) => command);
    assert.deepEqual(
      withoutEvent,
      allCommands.filter((command) => !["--status", "--recent", "--process"].includes(command)).sort(inOrderOf(output)),
    );
    assert.match(output, /\nerrors: 0, warnings: 0, left out: 7, not run: none\n$/);
    assert.equal(exitCode, 0);
    assert.equal((await readdir(path.join(home, "Kestrune Shorts"))).length, 3);
  });

  it("is as short as docs/helper-protocol.md says", async () => {
    const lines = (await readFile(minimalHelper, "utf8")).split("\n").filter((line) => line.trim() !== "");
    assert.ok(lines.length <= 35, `${lines.length} lines`);
  });

  it("tells an error when ffmpeg fails", async (t) => {
    const home = await temporaryFolder(t);
    const { output } = await checkHelper([minimalHelper, "--only", "process", "--replay", minimalHelper], {
      HOME: home,
    });
    assert.match(output, /^warning {3}--process: it ends in an "error" event; the user reads: ffmpeg is missing or/);
    assert.match(output, /\nerrors: 0, warnings: 1,/);
  });
});

function inOrderOf(text) {
  return (a, b) => text.indexOf(`${a}: `) - text.indexOf(`${b}: `);
}

describe("check-helper", () => {
  it("works in a fresh clone, from anywhere, through a link, on a helper elsewhere", async (t) => {
    const clone = await temporaryFolder(t);
    const files = execFileSync("git", ["ls-files", "--", "tools", "docs/helper-events.schema.json"], { cwd: checkout });
    for (const file of files.toString().trim().split("\n")) {
      await mkdir(path.join(clone, path.dirname(file)), { recursive: true });
      await copyFile(path.join(checkout, file), path.join(clone, file));
    }
    const helper = await writeHelper(await temporaryFolder(t), `echo '{"event":"recent","folder":"/"}'`);
    const elsewhere = await temporaryFolder(t);
    const program = path.join(elsewhere, "check-helper");
    await symlink(path.join(clone, "tools", "check-helper"), program);
    await writeFile(path.join(elsewhere, "package.json"), `{"type":"module"}`);
    const result = await runProgram(program, [path.relative(elsewhere, helper), "--only", "recent"], {
      cwd: elsewhere,
    });
    assert.equal(result.errorOutput, "");
    assertVerdict(result.output, "--recent", "ok");
    assert.equal(result.exitCode, 0);
  });

  it("needs no ffmpeg for the rest", async (t) => {
    const lines = `case $1 in --recent) echo '{"event":"recent","folder":"/"}' ;; esac`;
    const helper = await writeHelper(await temporaryFolder(t), lines);
    const bin = await temporaryFolder(t);
    for (const program of ["node", "bash", "env"]) {
      const real = execFileSync("sh", ["-c", `command -v ${program}`])
        .toString()
        .trim();
      await writeFile(path.join(bin, program), `#!/bin/sh\nexec ${real} "$@"\n`, { mode: 0o755 });
    }
    const { exitCode, output } = await checkHelper([helper, "--only", "recent", "--only", "process"], { PATH: bin });
    assert.match(
      output,
      /\nskipped {3}--process: no test video could be made \(ffmpeg is not installed\); install ffmpeg or/,
    );
    assert.match(output, /\nerrors: 0, warnings: 0, left out: 0, not run: --process\n$/);
    assertVerdict(output, "--recent", "ok");
    assert.equal(exitCode, 2);
  });

  it("shows each run with --verbose", async (t) => {
    const lines = `echo '{"event":"recent","folder":"/"}'; echo thinking >&2; printf unfinished`;
    const { output } = await checkLines(t, "recent", lines, ["--verbose"]);
    const shown = [
      "run       --recent",
      `          out  {"event":"recent","folder":"/"}`,
      "          out  unfinished (without a newline)",
      "          err  thinking",
      "          end  exit code 0 after ",
    ];
    assert.ok(output.startsWith(shown.join("\n")), output);
  });

  it("names only files that are there as made", async (t) => {
    const folder = await temporaryFolder(t);
    await writeFile(path.join(folder, "a.mp4"), "not looked at");
    const lines = `echo '{"event":"done","formatted":["${folder}/a.mp4","/nowhere/b.mp4"]}'`;
    const { output } = await checkLines(t, "process", lines, ["--replay", path.join(folder, "a.mp4")]);
    assert.ok(output.includes(`\nnew Short: ${folder}/a.mp4\n`), output);
    assert.doesNotMatch(output, /new Short: \/nowhere/);
  });

  it("takes an unknown command that ends well or tells an error", async (t) => {
    for (const lines of ["true", `echo '{"event":"error","error":"unknown"}'; exit 1`]) {
      const { exitCode, output } = await checkLines(t, "future-command", lines);
      assert.equal(output, "ok        --future-command\nerrors: 0, warnings: 0, left out: 0, not run: none\n");
      assert.equal(exitCode, 0);
    }
    const helper = await writeHelper(await temporaryFolder(t), "exit 3");
    const { exitCode, output } = await checkHelper([helper, "--future-command"]);
    assert.match(output, /^error {5}--future-command: it ended with exit code 3/);
    assert.equal(exitCode, 1);
  });

  it("asks nothing of a download when no update is on offer", async (t) => {
    const { exitCode, output } = await checkLines(t, "download-update", `echo '{"event":"error","error":"none"}'`);
    assert.match(output, /^ok {8}--download-update\n/);
    assert.equal(exitCode, 0);
  });

  it("believes a link that the status confirms", async (t) => {
    const lines = `case $1 in
      --link) echo '{"event":"linked"}' ;;
      --status) echo '{"event":"status","linked":true,"login":"ana"}' ;;
      esac`;
    const { output } = await checkLines(t, "link", lines);
    assert.match(output, /^ok {8}--link\n/);
  });
});

describe("check-helper --only chat-set", () => {
  const chat = `case $1 in
    --chat-set) printf '%s\\n' "$2" >>"$here/sent"; STORE; ANSWER ;;
    --chat-get) printf '{"event":"chat",%s\\n' "$(tail -c +2 "$here/stored")" ;;
    esac`;
  const stored = `{"command":"!rune","cooldown_s":45,"enabled":false,"per_stream_cap":100}`;
  const answer = `printf '{"event":"chat",%s\\n' "$(tail -c +2 <<<"$2")"`;

  async function check(t, store, reply) {
    const folder = await temporaryFolder(t);
    await writeFile(path.join(folder, "stored"), stored);
    const helper = await writeHelper(folder, chat.replace("STORE", store).replace("ANSWER", reply));
    const result = await checkHelper([helper, "--only", "chat-set"]);
    return { ...result, sent: await readFile(path.join(folder, "sent"), "utf8"), folder };
  }

  it("changes a number and puts it back", async (t) => {
    const { exitCode, output, sent, folder } = await check(t, `printf '%s' "$2" >"$here/stored"`, answer);
    assert.equal(exitCode, 0, output);
    assert.deepEqual(sent.trim().split("\n"), [stored.replace("100", "99"), stored]);
    assert.equal(await readFile(path.join(folder, "stored"), "utf8"), stored);
  });

  const wrongs = [
    ["forgets them", ":", answer, `--chat-get then reports something else: "per_stream_cap" is 100, not 99`],
    [
      "refuses them",
      ":",
      `echo '{"event":"chat","error":"no"}'`,
      "it refuses settings like its own; the user reads: no",
    ],
    [
      "answers others",
      ":",
      `echo '{"event":"chat","command":"!a"}'`,
      `its answer differs from what was sent: "command"`,
    ],
    [
      "keeps the change",
      `[[ $2 == *99* ]] && printf '%s' "$2" >"$here/stored"`,
      answer,
      `the settings could not be restored: ${stored}`,
    ],
  ];
  for (const [what, store, reply, said] of wrongs) {
    it(`finds out a helper that ${what}`, async (t) => {
      const { exitCode, output } = await check(t, store, reply);
      assert.ok(output.includes(`error     --chat-set: ${said}`), output);
      assert.equal(exitCode, 1);
    });
  }

  it("leaves settings alone that could not be put back", async (t) => {
    const { exitCode, output } = await checkLines(t, "chat-set", `echo '{"event":"chat","error":"no network"}'`);
    assert.match(output, /^warning {3}--chat-set: not run: --chat-get reports no settings to restore\n/);
    assert.equal(exitCode, 0);
  });
});

describe("check-helper's command line", () => {
  it("explains itself", async () => {
    const { exitCode, output } = await checkHelper(["--help"]);
    assert.equal(exitCode, 0);
    assert.match(output, /^check-helper PROGRAM \[OPTION\.\.\.\]\n/);
  });

  const wrongs = [
    ["no program", [], "name the program to check"],
    ["a program that does not exist", ["/nowhere"], "the program /nowhere does not exist"],
    ["a folder", ["/tmp"], "the program /tmp is not a file"],
    [
      "two programs",
      ["/bin/sh", "helper.sh"],
      `name one program; the dock starts it without further arguments such as "helper.sh"`,
    ],
    ["an unknown option", ["/bin/true", "--fast"], "unknown option --fast"],
    ["a misspelt option", ["/bin/true", "--verbos"], "unknown option --verbos; did you mean --verbose?"],
    ["an option without its value", ["/bin/true", "--only"], "Option '--only <value>' argument missing"],
    ["an unknown command", ["/bin/true", "--only", "clip"], "unknown command --clip: --status --link"],
    ["a misspelt command", ["/bin/true", "--only", "recents"], "unknown command --recents; did you mean --recent?"],
    ["no time", ["/bin/true", "--timeout", "0"], `--timeout needs a number of seconds, not "0"`],
    ["a replay that does not exist", ["/bin/true", "--replay", "/a.mkv"], "the replay /a.mkv does not exist"],
  ];
  for (const [what, args, said] of wrongs) {
    it(`refuses ${what} in one line`, async () => {
      // What the build root adds to this is for people who called it there.
      const { exitCode, errorOutput } = await checkHelper(args, { KESTRUNE_ROOT_ID: "" });
      assert.equal(exitCode, 2);
      assert.ok(errorOutput.startsWith(`check-helper: ${said}`), errorOutput);
      assert.match(errorOutput, /^.* \(--help explains\)\n$/);
    });
  }

  it("says in the build root that it sees the checkout alone", async () => {
    const { errorOutput } = await checkHelper(["/home/ana/helper"], { KESTRUNE_ROOT_ID: "forky-0 made today" });
    assert.match(
      errorOutput,
      /does not exist in the build root, which contains only the checkout: leave out \.\/run shell/,
    );
  });

  it("lets a helper write as much as it likes to its error stream", async (t) => {
    const { exitCode, output } = await checkLines(
      t,
      "recent",
      `head -c 1000000 /dev/zero >&2; echo '{"event":"recent","folder":"/"}'`,
    );
    assert.match(output, /^ok {8}--recent\n/);
    assert.equal(exitCode, 0);
  });
});
