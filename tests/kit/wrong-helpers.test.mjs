// Helpers that do one thing wrong each, and what tools/check-helper says about it.

import assert from "node:assert/strict";
import { writeFile } from "node:fs/promises";
import path from "node:path";
import { describe, it } from "node:test";
import { checkLines, temporaryFolder } from "./support/helper-check.mjs";

const right = `echo '{"event":"recent","folder":"/"}'`;
const nothing = `no "recent" event came: the list of recent clips stays as it was`;

/** [what it does, command, its bash lines, what is said (the start of a line after the severity), more options] */
const wrongs = {
  error: [
    ["breaks its JSON", "recent", `echo '{"event":"recent",}'`, `a line is not JSON, so the dock drops it: {"event"`],
    ["writes an array", "recent", `echo '[{"event":"recent"}]'`, "a line is JSON but no object"],
    ["forgets the last newline", "recent", `printf '{"event":"recent","folder":"/"}'`, "the last line has no newline"],
    ["writes Latin-1", "recent", `printf '{"event":"recent","folder":"/\\xe9"}\\n'`, "a line is not UTF-8"],
    ["leaves out the kind", "recent", `echo '{"folder":"/"}'`, `an object has no text "event"`],
    ["says nothing", "recent", "true", nothing],
    ["writes to the error stream alone", "recent", `${right} >&2`, nothing],
    [
      "fails silently",
      "recent",
      "echo 'no database' >&2; exit 3",
      "it ended with exit code 3 without an event: the " +
        `user reads "The Kestrune helper stopped unexpectedly"; its error output ends: no database`,
    ],
    ["crashes", "recent", "kill -SEGV $$", "it crashed (SIGSEGV) without an event"],
    ["hangs", "recent", `${right}; exec sleep infinity`, "it did not end within", ["--timeout", "1"]],
    ["waits for input", "recent", `cat >/dev/null; ${right}`, "it did not end within", ["--timeout", "1"]],
    [
      "names a folder that is not there",
      "recent",
      `echo '{"event":"recent","folder":"/nowhere"}'`,
      `"folder" names a folder that is not there: /nowhere`,
    ],
    [
      "lists a clip that is not there",
      "recent",
      `echo '{"event":"recent","folder":"/","items":[{"name":"a","path":"/a.mp4"}]}'`,
      `"items[0].path" names a file that is not there: /a.mp4`,
    ],
    [
      "lists a clip without a path",
      "recent",
      `echo '{"event":"recent","folder":"/","items":[{"name":"a"}]}'`,
      `"items[0]" of "recent" lacks the member "path"`,
    ],
    [
      "writes words for a switch",
      "status",
      `echo '{"event":"status","linked":"yes"}'`,
      `"linked" of "status" must be true or false but is "yes"; the dock reads it as if it were missing`,
    ],
    [
      "tells an error that is not read",
      "status",
      `echo '{"event":"error","error":"no network"}'`,
      `"error" is not read after --status, so the user sees nothing of it (read: "status")`,
    ],
    [
      "gives an address without a scheme",
      "link",
      `echo '{"event":"code","url":"accounts.example","code":"A"}'`,
      `"url" of "code" must be an address that begins with its scheme`,
    ],
    [
      "asks for a consent nowhere",
      "chat-get",
      `echo '{"event":"chat","command":"!a","enabled":true}'`,
      `"consent_url" is missing while "granted" is false`,
    ],
    [
      "writes fractions",
      "chat-get",
      `echo '{"event":"chat","command":"!a","cooldown_s":12.5}'`,
      `"cooldown_s" of "chat" must be a whole number but is 12.5`,
    ],
    [
      "credits nobody",
      "poll-triggers",
      `echo '{"event":"triggers","triggers":["ana"]}'`,
      `"triggers[0]" of "triggers" must be an object but is "ana"`,
    ],
    ["names no version", "check-update", `echo '{"event":"update","update":true}'`, `"latest" is empty`],
    [
      "offers and never delivers",
      "download-update",
      `echo '{"event":"update","update":true,"latest":"2"}'`,
      `no "downloaded" or "update" or "error" event came: the dock shows "Update failed`,
    ],
    [
      "delivers nothing",
      "download-update",
      `echo '{"event":"downloaded","path":"/nowhere.exe"}'`,
      `"path" of "downloaded" names a file that is not there: /nowhere.exe`,
    ],
    [
      "names a preview that is not there",
      "preview",
      `echo '{"event":"preview","path":"/nowhere.png"}'`,
      `"path" of "preview" names a file that is not there: /nowhere.png`,
    ],
    [
      "bears no company",
      "recent",
      `mkdir "$here/lock" || exit 1; sleep 1; rmdir "$here/lock"; ${right}`,
      "with two runs at the same time: it ended with exit code 1 without an event",
    ],
  ],
  warning: [
    ["prints in between", "recent", `echo working; ${right}`, "a line is not JSON; the dock drops it"],
    ["invents a kind", "recent", `echo '{"event":"hello"}'; ${right}`, `"hello" is no event of the protocol`],
    ["crashes after its answer", "recent", `${right}; kill -SEGV $$`, "it crashed (SIGSEGV) after its answer"],
    ["has no folder", "recent", `echo '{"event":"recent"}'`, `"folder" is empty: "Open output folder" does nothing`],
    [
      "does not flush",
      "link",
      `sleep 1.2; printf '{"event":"code","url":"a:b","code":"A"}\\n{"event":"linked"}\\n'`,
      "all 2 events came at once, at the end of a run of",
    ],
    [
      "waits for its user",
      "link",
      `echo '{"event":"code","url":"a:b","code":"A"}'; exec sleep infinity`,
      "the link was not confirmed in the browser in time",
      ["--timeout", "1"],
    ],
    ["names nobody", "status", `echo '{"event":"status","linked":true}'`, `an account is linked but "login" is empty`],
    [
      "chooses what it does not offer",
      "status",
      `echo '{"event":"status","layout":"a","layouts":["b"]}'`,
      `"layout" is "a", which "layouts" does not offer`,
    ],
    [
      "goes beyond its range",
      "chat-get",
      `echo '{"event":"chat","command":"!a","cooldown_s":5}'`,
      `"cooldown_s" of "chat" is 5, beyond 10, where its range ends`,
    ],
    [
      "talks too much",
      "link",
      `printf '{"event":"error","error":"%05000d"}\\n' 0`,
      `"error" of "error" has 5000 characters; the dock cuts it after 4000`,
    ],
    [
      "fails with a word",
      "link",
      `echo '{"event":"error","error":"no network"}'; exit 1`,
      `it ends in an "error" event; the user reads: no network`,
    ],
    [
      "previews a text",
      "preview",
      `[[ -e $here/x.png ]] || { echo x >"$here/$$"; mv "$here/$$" "$here/x.png"; }; echo '{"event":"preview","path":"'"$here"'/x.png"}'`,
      "the preview is no PNG, JPEG, GIF or BMP file",
    ],
    ["has no preview", "preview", `echo '{"event":"preview"}'`, `"preview" names no "path", so the preview is hidden`],
  ],
};

for (const [severity, cases] of Object.entries(wrongs)) {
  describe(`check-helper gives a${severity === "error" ? "n" : ""} ${severity} to a helper that`, () => {
    for (const [what, command, lines, said, options] of cases) {
      it(what, async (t) => {
        const { exitCode, output } = await checkLines(t, command, lines, options);
        assert.ok(output.includes(`\n  ${severity.padEnd(8)}  ${said}`), output);
        // A run that waits for its user is killed, which is an error of its own.
        assert.equal(exitCode, severity === "error" || options ? 1 : 0, output);
      });
    }
  });
}

describe("check-helper given one replay", () => {
  const clips = [
    ["changes it", `echo x >>"$2"; echo '{"event":"pending"}'`, "error     the replay was changed"],
    ["removes it", `rm -f "$2"; echo '{"event":"pending"}'`, "error     the replay was removed or moved"],
    [
      "makes no Short",
      `echo '{"event":"done","formatted":["/a.mp4"]}'`,
      `error     "formatted[0]" names a file that is not there: /a.mp4`,
    ],
    [
      "makes it somewhere",
      `echo '{"event":"done","formatted":["a.mp4"]}'`,
      `error     "formatted[0]" is no full path, and the dock runs in another folder: a.mp4`,
    ],
    [
      "uses one file for all",
      `cp "$2" "$here/a.mp4"; echo '{"event":"done","formatted":["'"$here"'/a.mp4"]}'`,
      "error     two clips made at the same time ended in the same file",
    ],
  ];
  for (const [what, lines, said] of clips) {
    it(`finds out a helper that ${what}`, async (t) => {
      const replay = path.join(await temporaryFolder(t), "replay.mkv");
      await writeFile(replay, "not looked at");
      const { exitCode, output } = await checkLines(t, "process", lines, ["--replay", replay]);
      assert.ok(output.includes(`\n  ${said}`), output);
      assert.equal(exitCode, 1);
    });
  }
});
