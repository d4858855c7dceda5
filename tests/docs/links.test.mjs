// What the pages of this repository name is there: linked files, their headings, and tests.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { existsSync, readFileSync } from "node:fs";
import path from "node:path";
import { describe, it } from "node:test";

const checkout = path.resolve(import.meta.dirname, "..", "..");
const pages = execFileSync("git", ["ls-files", "*.md"], { cwd: checkout, encoding: "utf8" }).trim().split("\n");
const read = (page) => readFileSync(path.join(checkout, page), "utf8");

/** The links of a page within this repository, each as the linked file and the anchor in it, if any. */
function links(page) {
  return [...read(page).matchAll(/\]\(([^)#:]*)(?:#([^)]*))?\)/g)].map(([, file, anchor]) => ({
    file: file === "" ? page : path.join(path.dirname(page), file),
    anchor,
  }));
}

/** The anchors of a page's headings, as repository web sites make them. */
function anchors(page) {
  return [...read(page).matchAll(/^#+ (.*)$/gm)].map(([, heading]) =>
    heading
      .toLowerCase()
      .replace(/[^\p{L}\p{N} _-]/gu, "")
      .replaceAll(" ", "-"),
  );
}

describe("the pages", () => {
  it("link to files and headings that are there", () => {
    const all = pages.flatMap((page) => links(page).map((link) => ({ page, ...link })));
    assert.ok(all.length > 80, `only ${all.length} links were found`);
    for (const { page, file, anchor } of all) {
      assert.ok(existsSync(path.join(checkout, file)), `${page} links to ${file}`);
      assert.ok(!anchor || anchors(file).includes(anchor), `${page} links to ${file}#${anchor}`);
    }
  });

  it("name tests that are there", () => {
    const all = pages.flatMap((page) =>
      [...read(page).matchAll(/`(tests\/[\w./-]+\.\w+)`/g)].map(([, file]) => ({ page, file })),
    );
    assert.ok(all.length > 40, `only ${all.length} names were found`);
    for (const { page, file } of all) {
      assert.ok(existsSync(path.join(checkout, file)), `${page} names ${file}`);
    }
  });
});
