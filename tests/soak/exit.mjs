// ./run soak exit: starts and ends OBS again and again, with the module as busy as possible.

import assert from "node:assert/strict";
import { writeFile, readFile, rm } from "node:fs/promises";
import path from "node:path";
import { waitFor } from "../../tools/obs/wait.mjs";
import { countLeaksWithoutModule } from "../obs/support/clean-end.mjs";
import { TestSession, fakeRunner } from "../obs/support/test-session.mjs";

const kinds = ["slow", "silent", "chatty", "never-ending", "crashing"];
const states = ["save pending", "capture active", "sections open", "installer running"];
const limit_ms = 5000;
const cycles = Number(process.argv[2] ?? 200);

/** Each brings the dock into a state, with an account linked. */
const enter = {
  async "save pending"(test) {
    await test.dock.waitForStatus(/Ready/, undefined, 20_000);
    await test.websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType: "ClipThat" });
  },
  async "capture active"(test) {
    await test.dock.openSection("hotkeySection");
    await test.dock.click({ text: /^(Set hotkey|Change)$/ });
    await test.dock.waitForWidget({ text: "Press keys… (Esc cancels)", visible: true });
  },
  async "sections open"(test) {
    for (const section of ["styleSection", "hotkeySection", "recentSection"]) {
      await test.dock.openSection(section);
    }
  },
  async "installer running"(test) {
    await test.dock.click({ name: "updateBtn", enabled: true });
    await test.dock.waitForWidget({ name: "updateBtn", text: /^Installing/ });
  },
};

/** Sends vendor requests in four endless loops, until OBS has gone. */
function floodWithRequests(websocket) {
  const counts = { answered: 0 };
  let over = false;
  const strand = async (requestType) => {
    while (!over) {
      await websocket.call("CallVendorRequest", { vendorName: "Kestrune", requestType });
      counts.answered += 1;
    }
  };
  for (const requestType of ["ClipThat", "GetStatus", "ClipThat", "GetStatus"]) {
    strand(requestType).catch(() => {
      over = true;
    });
  }
  return counts;
}

async function pidsOfRuns(test) {
  const text = await readFile(path.join(test.session.folder, "helper-runs"), "utf8").catch(() => "");
  return text
    .split("\n")
    .slice(0, -1)
    .map((line) => Number(line.split(" ")[1]));
}

function isAlive(pid) {
  try {
    process.kill(pid, 0);
    return true;
  } catch {
    return false;
  }
}

const ownLeaks = await countLeaksWithoutModule();
const test = await TestSession.create("soak-exit", {
  helper: path.join(import.meta.dirname, "helpers", "soak-helper"),
  extraEnv: { KESTRUNE_UPDATE_RUNNER: fakeRunner("held-runner") },
});
await test.switchReplayBufferOn();

const times = [];
let requests = 0;
let runs = 0;
try {
  for (let cycle = 0; cycle < cycles; ++cycle) {
    const kind = kinds[cycle % kinds.length];
    const state = states[Math.floor(cycle / kinds.length) % states.length];
    const what = `cycle ${cycle + 1}, ${kind} helper, ${state}`;
    await rm(path.join(test.session.folder, "helper-runs"), { force: true });
    await writeFile(path.join(test.session.folder, "kind"), kind);
    // An offer moves the widgets below, so there is one only where needed.
    const offer = path.join(test.session.folder, "offer");
    await (state === "installer running" ? writeFile(offer, "") : rm(offer, { force: true }));

    await test.startObs();
    await enter[state](test);
    const counts = floodWithRequests(test.websocket);
    await waitFor("some answers", () => counts.answered > 20);

    const end = await test.session.obs.stop();
    await test.websocket.disconnect().catch(() => {});
    const left = (await pidsOfRuns(test)).filter(isAlive);
    assert.equal(end.exitCode, 0, what);
    assert.equal(end.memoryLeaks, ownLeaks, what);
    assert.ok(end.milliseconds < limit_ms, `${what}: OBS took ${end.milliseconds} ms to exit`);
    assert.deepEqual(left, [], `${what}: helper runs outlived OBS`);

    times.push(end.milliseconds);
    requests += counts.answered;
    runs += (await pidsOfRuns(test)).length;
    console.log(`${what}: exited after ${end.milliseconds} ms, ${counts.answered} requests answered`);
  }
} finally {
  await test.close();
}

times.sort((a, b) => a - b);
console.log(
  `${cycles} starts and ends, ${runs} helper runs, ${requests} vendor requests: no crash, no hang, ` +
    `${ownLeaks} memory leaks each time as without the module, no helper run left over; ` +
    `ends took ${times[Math.floor(times.length / 2)]} ms (median) to ${times.at(-1)} ms`,
);
