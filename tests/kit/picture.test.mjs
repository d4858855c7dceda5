import assert from "node:assert/strict";
import { it } from "node:test";
import { complaintsAboutPicture } from "../../tools/helper-kit/picture.mjs";

it("names a preview that cannot be read", async () => {
  // Whoever runs the tests may be allowed to read every file; one that vanished meanwhile fails alike.
  const [finding] = await complaintsAboutPicture("/nowhere.png");
  assert.match(JSON.stringify(finding), /the preview cannot be read \(ENOENT\), so the dock hides it: \/nowhere.png/);
});
