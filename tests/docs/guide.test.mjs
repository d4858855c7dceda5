// The user guide says what the dock says, to the last character, and shows what the dock looks like.

import assert from "node:assert/strict";
import { globSync, readFileSync, readdirSync } from "node:fs";
import path from "node:path";
import { describe, it } from "node:test";
import { shownTexts, shownTextsOfFiles } from "./shown-texts.mjs";

const checkout = path.resolve(import.meta.dirname, "..", "..");
const docs = path.join(checkout, "docs");
const pages = ["guide.md", "troubleshooting.md"];
const inCheckout = (pattern) => globSync(pattern, { cwd: checkout }).map((file) => path.join(checkout, file));
const sources = inCheckout("obs-plugin/{helper,dock,clip,hotkey,chat,update}/*.{cpp,hpp}");

const read = (page) => readFileSync(path.join(docs, page), "utf8");

const marks = [/"([^"]+)"/g, /\*\*(.+?)\*\*/g, /(?<!\*)\*([^*]+)\*/g, /`([^`]+)`/g, /\[([^\]]+)\]/g];

/** What a page sets apart from its own words: cells of tables, quotations, other letters, links and pictures. */
function quotedTexts(page) {
  const cells = page.split("\n").flatMap((line) => (line.startsWith("|") ? line.split("|") : []));
  const prose = page.replace(/\s+/g, " ");
  const quoted = marks.flatMap((mark) => [...prose.matchAll(mark)].map(([, text]) => text));
  return [...cells, ...quoted].map((text) => text.replaceAll("**", "").trim());
}

/** The first column of a page's tables of texts. */
function textColumn(page) {
  const tables = page.match(/^(\|.*\n)+/gm) ?? [];
  return tables
    .filter((table) => /^\| (Text|Red text|Tooltip)/.test(table))
    .flatMap((table) => table.trim().split("\n").slice(2))
    .map((row) => row.split("|")[1].trim());
}

const asPattern = (text) => text.replace(/[.*+?^${}()|[\]\\]/g, "\\$&").replace(/%[12]/g, ".+?");

/** Whether the dock may say this: a whole text of the sources, or one that begins with a piece of theirs. */
function maySay(texts, said) {
  return texts.some((text) => {
    const isWhole = /[.…!)]$/.test(text);
    return new RegExp(isWhole ? `^${asPattern(text)}( Retry update)?$` : `^${asPattern(text)}`).test(said);
  });
}

/** Whether one of `quoted` begins or ends with the text (pieces of texts are looked for, too); %1 is anything. */
function isAmong(quoted, text) {
  const pattern = new RegExp(`^${asPattern(text)}|${asPattern(text)}$`);
  return quoted.some((candidate) => pattern.test(candidate));
}

describe("the texts in the sources", () => {
  it("are found with their pieces joined and without formatting", () => {
    const source = `
      #include "dock/not_this.hpp"
      // "Nor this": a comment.
      label->setObjectName(QStringLiteral("status"));
      setStatus(QStringLiteral("Say \\"%1\\", "
                               "then <b>go</b>…"), true);
      addSection(u"This && that"_s);`;
    assert.deepEqual(shownTexts(source), ['Say "%1", then go…', "This & that"]);
  });

  it("are many", () => {
    const texts = shownTextsOfFiles(sources);
    assert.ok(texts.length > 100, `only ${texts.length} were found`);
    assert.ok(texts.includes("OBS didn't report the saved replay."));
  });
});

describe("a text on a page", () => {
  it("counts only where it is quoted, and to the last character", () => {
    const page = '| Saving the last 60 s… | Wait. |\nClick **Connect account**, not *Bubble* or\n"Off".';
    const quoted = quotedTexts(page);
    for (const text of ["Saving the last", "Saving the last %1 s…", "Connect account", "Bubble", "Off"]) {
      assert.ok(isAmong(quoted, text), text);
    }
    for (const text of ["Saving the last 60 s...", "Connect  account", "Off.", "Click", "not", "Connect accounts"]) {
      assert.ok(!isAmong(quoted, text), text);
    }
  });
});

/** The PNG files that a page of the checkout shows, in Markdown or in HTML. */
function shownPictures(page) {
  const text = readFileSync(path.join(checkout, page), "utf8");
  const files = [...text.matchAll(/!\[[^\]]+\]\(([^)]+\.png)\)|<img [^>]*src="([^"]+\.png)"/g)];
  return files.map(([, inMarkdown, inHtml]) => path.join(path.dirname(page), inMarkdown ?? inHtml));
}

describe("the user guide", () => {
  it("has every text that the dock shows", () => {
    const quoted = pages.flatMap((page) => quotedTexts(read(page)));
    assert.deepEqual(
      shownTextsOfFiles(sources).filter((text) => !isAmong(quoted, text)),
      [],
    );
  });

  it("has nothing else in its tables of texts", () => {
    const column = pages.flatMap((page) => textColumn(read(page)));
    assert.ok(column.length > 35, `only ${column.length} rows were found`);
    const texts = shownTextsOfFiles(sources);
    assert.deepEqual(
      column.filter((said) => !maySay(texts, said)),
      [],
    );
  });

  it("and other pages for users show every picture there is, and each is one that the script makes", async () => {
    const subjects = await Promise.all(inCheckout("tools/screenshots/shots/*.mjs").map((file) => import(file)));
    const made = subjects.flatMap(({ shots }) => shots.map(({ name }) => `docs/images/${name}.png`)).sort();
    const there = readdirSync(path.join(docs, "images")).filter((name) => name.endsWith(".png"));
    assert.deepEqual(there.map((name) => `docs/images/${name}`).sort(), made);

    const pagesForUsers = [...pages, "remote-control.md"].map((page) => `docs/${page}`);
    const shown = ["README.md", "sample-helper/README.md", ...pagesForUsers].flatMap(shownPictures);
    assert.deepEqual([...new Set(shown)].sort(), made);
  });
});
