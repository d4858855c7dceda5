// tools/check-helper on helpers that are right, and on its own command line.

import assert from "node:assert/strict";
import { readdir, readFile, writeFile } from "node:fs/promises";
import path from "node:path";
import { describe, it } from "node:test";
import { allCommands } from "../../tools/helper-kit/schema.mjs";
import { checkHelper, checkLines, temporaryFolder, writeHelper } from "./support/helper-check.mjs";

const sampleHelper = path.join(process.env.KESTRUNE_BUILD_DIR, "sample-helper", "sample-helper");

describe("check-helper and the sample helper", () => {
  it("finds nothing wrong with any command", async (t) => {
    const home = await temporaryFolder(t);
    const { exitCode, output } = await checkHelper([sampleHelper, "--all"], { KESTRUNE_SAMPLE_HELPER_HOME: home });
    const lines = output.split("\n");
    for (const command of allCommands) {
      const verdict = lines.slice(lines.indexOf(command) + 1).find((line) => /^ {2}\w/.test(line));
      assert.equal(verdict, "  ok        as the protocol wants it", output);
    }
    assert.match(output, /\nerrors: 0, warnings: 0, not run: none\n$/);
    assert.equal(exitCode, 0);
    const shorts = (await readdir(path.join(home, "Shorts"))).map((name) => path.join(home, "Shorts", name));
    assert.equal(shorts.length, 3);
    shorts.forEach((short) => assert.ok(output.includes(`\nmade, and left there: ${short}\n`), output));
  });

  it("leaves an account alone unless asked", async (t) => {
    const home = await temporaryFolder(t);
    await writeFile(path.join(home, "account.json"), `{"link":"linked"}`);
    const { exitCode, output } = await checkHelper([sampleHelper], { KESTRUNE_SAMPLE_HELPER_HOME: home });
    assert.match(output, /not run: --link --chat-set --download-update --process\n$/);
    assert.match(output, /--process\n {2}skipped {3}an account is linked, the Short may be uploaded: only with --all/);
    assert.equal(exitCode, 0);
    assert.deepEqual(await readdir(path.join(home, "Shorts")), []);
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
    ["forgets them", ":", answer, `--chat-get tells something else afterwards: "per_stream_cap" is 100, not 99`],
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
      `the settings could not be put back as they were: ${stored}`,
    ],
  ];
  for (const [what, store, reply, said] of wrongs) {
    it(`finds out a helper that ${what}`, async (t) => {
      const { exitCode, output } = await check(t, store, reply);
      assert.ok(output.includes(`\n  error     ${said}`), output);
      assert.equal(exitCode, 1);
    });
  }

  it("leaves settings alone that could not be put back", async (t) => {
    const { exitCode, output } = await checkLines(t, "chat-set", `echo '{"event":"chat","error":"no network"}'`);
    assert.match(output, /\n {2}warning {3}not run: --chat-get tells no settings that could be put back\n/);
    assert.equal(exitCode, 0);
  });
});

describe("check-helper's command line", () => {
  it("explains itself", async () => {
    const { exitCode, output } = await checkHelper(["--help"]);
    assert.equal(exitCode, 0);
    assert.match(output, /^tools\/check-helper PROGRAM \[OPTION\.\.\.\]\n/);
  });

  const wrongs = [
    ["no program", [], "name one program to check"],
    ["a program that is not there", ["/nowhere"], "the program /nowhere is not there"],
    ["a file that is no program", [import.meta.filename], `${import.meta.filename} is no program`],
    ["an unknown option", ["/bin/true", "--fast"], "Unknown option '--fast'"],
    ["an unknown command", ["/bin/true", "--only", "clip"], "there is no command --clip; there are: --status --link"],
    ["no time", ["/bin/true", "--timeout", "0"], "--timeout needs a number of seconds"],
    ["a replay that is not there", ["/bin/true", "--replay", "/a.mkv"], "the replay /a.mkv is not there"],
  ];
  for (const [what, args, said] of wrongs) {
    it(`refuses ${what}`, async () => {
      const { exitCode, errorOutput } = await checkHelper(args);
      assert.equal(exitCode, 2);
      assert.ok(errorOutput.startsWith(`check-helper: ${said}`), errorOutput);
    });
  }

  it("says so when a program cannot be started", async (t) => {
    const helper = path.join(await temporaryFolder(t), "helper");
    await writeFile(helper, "\x7fELF, or so it seems", { mode: 0o755 });
    const { exitCode, output } = await checkHelper([helper, "--only", "status"]);
    assert.match(output, /\n {2}error {5}it cannot be started \(ENOEXEC\): the user reads "Couldn't start the/);
    assert.equal(exitCode, 1);
  });

  it("lets a helper write as much as it likes to its error stream", async (t) => {
    const { exitCode, output } = await checkLines(
      t,
      "recent",
      `head -c 1000000 /dev/zero >&2; echo '{"event":"recent","folder":"/"}'`,
    );
    assert.match(output, /\n {2}ok {8}/);
    assert.equal(exitCode, 0);
  });
});
