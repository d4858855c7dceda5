import { setTimeout as sleep } from "node:timers/promises";

export { sleep };

/**
 * Calls `condition` until it returns something truthy, and returns that. Throws after `limitMs`; the message contains
 * `what` and, if given, what `explain` returns.
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
