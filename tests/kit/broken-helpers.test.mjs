// Helpers that do one thing wrong each: the first line that tools/check-helper prints about them names the cause.

import assert from "node:assert/strict";
import { writeFile } from "node:fs/promises";
import path from "node:path";
import { describe, it } from "node:test";
import { brokenMembers, oddMembers } from "./broken/members.mjs";
import { brokenOutput } from "./broken/output.mjs";
import { brokenPrograms, brokenRuns, oddRuns } from "./broken/runs.mjs";
import { checkHelper, checkLines, temporaryFolder } from "./support/helper-check.mjs";

/** Checks a helper of these bash lines; it is given a replay that no Short can be made of. */
async function check(t, command, lines, options = []) {
  const folder = await temporaryFolder(t);
  const replay = path.join(folder, "replay.mkv");
  await writeFile(replay, "not looked at");
  return checkLines(t, command, lines, ["--replay", replay, ...options]);
}

function assertFirstLine({ output }, severity, subject, said) {
  // While a link waits for its person, the report has to say so.
  const first = output.split("\n").find((line) => !line.startsWith("please"));
  assert.ok(first.startsWith(`${severity.padEnd(10)}${subject}: ${said}`), output);
}

/** Bash lines that write these events, with the folder and the arguments filled in. */
function writing(events) {
  const filledIn = events.replaceAll("$here", `'"$here"'`).replaceAll("$2", `'"$2"'`);
  // What stands for two lines is no escape of JSON's: "\n" between brackets.
  return `: >"$here/empty"; printf '%s\\n' '${filledIn.replaceAll("}\\n{", "}' '{")}'`;
}

const fromOutput = brokenOutput.map(([what, lines, said]) => [what, "recent", lines, said]);
const fromEvents = (table) => table.map(([what, command, events, said]) => [what, command, writing(events), said]);

const tables = {
  error: [...fromOutput, ...fromEvents(brokenMembers), ...brokenRuns],
  warning: [...fromEvents(oddMembers), ...oddRuns],
};

for (const [severity, cases] of Object.entries(tables)) {
  describe(`the report on a helper begins with the cause, as ${severity}, when it`, { concurrency: 4 }, () => {
    for (const [what, command, lines, said, options] of cases) {
      it(what, async (t) => {
        const result = await check(t, command, lines, options);
        assertFirstLine(result, severity, `--${command}`, said);
        assert.equal(result.exitCode, severity === "error" ? 1 : 0, result.output);
        assert.equal(result.errorOutput, "");
      });
    }
  });
}

describe("the report on a program that cannot be started begins with the cause when it", () => {
  for (const [what, bytes, mode, said] of brokenPrograms) {
    it(what, async (t) => {
      const program = path.join(await temporaryFolder(t), "helper");
      await writeFile(program, bytes, { mode });
      const result = await checkHelper([program, "--only", "status"]);
      assertFirstLine(result, "error", program, said);
      assert.match(result.output, /\n {10}The user reads "Couldn't start the Kestrune helper/);
      assert.equal(result.exitCode, 1);
    });
  }
});

describe("check-helper", () => {
  it("knows enough broken helpers", () => {
    const all = [...tables.error, ...brokenPrograms].map(([what]) => what);
    assert.ok(all.length >= 100, `only ${all.length}`);
    assert.deepEqual(all, [...new Set(all)]);
  });

  it("says once what is wrong with every command", async (t) => {
    const indenting = `printf '{\\n  "event": "%s",\\n  "linked": true\\n}\\n' "\${1#--}"`;
    const { output, exitCode } = await check(t, "status", indenting, ["--only", "recent", "--only", "chat-get"]);
    const cause = "JSON goes over several lines; write one object per line, without indents";
    assert.equal(output.split(cause).length - 1, 1, output);
    assert.match(
      output,
      /\nerror {5}--recent: the same as after --status\nerror {5}--chat-get: the same as after --status\n/,
    );
    assert.match(output, /\nerrors: 1, warnings: 0, left out: 0, not run: none\n$/);
    assert.equal(exitCode, 1);
  });

  it("tells the cause first and its consequence below", async (t) => {
    const { output } = await check(t, "recent", "exit 1");
    const [cause, consequence] = output.split("\n");
    assert.equal(cause, "error     --recent: it ended with exit code 1 without an event");
    assert.match(
      consequence,
      /^ {10}The user reads "The Kestrune helper stopped .* So no "recent" event came: the list/,
    );
  });

  it("tells once what is wrong with many lines", async (t) => {
    const { output } = await check(
      t,
      "recent",
      `for i in {1..30}; do echo "step $i"; echo '{"event":"recent",}'; done`,
    );
    assert.match(output, /^error .*: there is a comma before a closing bracket: .* \(and 29 more like it\)\n/);
    assert.match(output, /\nwarning .*: step 1 \(and 29 more like it\)\n/);
    assert.match(output, /\nerrors: 1, warnings: 1,/);
  });

  it("quotes whole lines", async (t) => {
    const line = `{"event":"recent","folder":"${"x".repeat(500)}",}`;
    const { output } = await check(t, "recent", `echo '${line}'`);
    assert.ok(output.split("\n")[0].endsWith(line), output);
  });

  it("lets a link that is never confirmed be", async (t) => {
    const code = `echo '{"event":"code","url":"https://a.example","code":"A"}'; exec sleep infinity`;
    const { exitCode, output } = await check(t, "link", code, ["--timeout", "1"]);
    assert.match(output, /^please {4}confirm in a browser: https:\/\/a\.example\n/);
    assert.match(output, /\nwarning {3}--link: the link was not confirmed in the browser in time/);
    assert.match(output, /\nerrors: 0, warnings: 1,/);
    assert.equal(exitCode, 0);
  });

  it("puts errors before warnings", async (t) => {
    const { output } = await check(t, "recent", `echo working; echo '{"event":"recent","folder":"/","items":1}'`);
    assert.match(output, /^error .*\n {10}.*\nwarning /);
  });
});
