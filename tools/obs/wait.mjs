import { setTimeout as sleep } from "node:timers/promises";

export { sleep };

/**
 * Calls `condition` until it returns something truthy, and returns that. Throws after `limit_ms`; the message contains
 * `what` and, if given, what `explain` returns.
 */
export async function waitFor(what, condition, { limit_ms = 20_000, every_ms = 100, explain } = {}) {
  const end = performance.now() + limit_ms;
  for (;;) {
    const answer = await condition();
    if (answer) {
      return answer;
    }
    if (performance.now() > end) {
      const seen = explain ? `: ${await explain()}` : "";
      throw new Error(`gave up after ${limit_ms} ms waiting for ${what}${seen}`);
    }
    await sleep(every_ms);
  }
}
