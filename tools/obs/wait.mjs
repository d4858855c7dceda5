// Waiting for conditions: the only way in which the demo and the tests let time pass.

import { setTimeout as sleep } from "node:timers/promises";

export { sleep };

/**
 * Calls `condition` until it answers something truthy and returns that answer.
 * Throws when `limitMs` milliseconds have passed; `what` names the condition in that error, and `explain`, when given,
 * adds what could be seen at that moment.
 */
export async function waitFor(what, condition, { limitMs = 20_000, everyMs = 100, explain } = {}) {
  const end = performance.now() + limitMs;
  for (;;) {
    const answer = await condition();
    if (answer) {
      return answer;
    }
    if (performance.now() > end) {
      const seen = explain ? `: ${await explain()}` : "";
      throw new Error(`gave up after ${limitMs} ms waiting for ${what}${seen}`);
    }
    await sleep(everyMs);
  }
}
