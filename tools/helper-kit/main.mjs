// The program behind tools/check-helper.

import { UsageError, readOptions, usage } from "./options.mjs";
import { Report } from "./report.mjs";
import { checkHelper } from "./session.mjs";

// Whoever reads the report may stop early, as `head` does.
process.stdout.on("error", () => process.exit(1));

/** Checks the helper that the arguments name; returns the exit code that `usage` explains. */
export async function main(args) {
  try {
    const options = readOptions(args);
    if (options.help) {
      console.log(usage);
      return 0;
    }
    return await checkHelper(options, new Report(console.log));
  } catch (error) {
    if (!(error instanceof UsageError)) {
      throw error;
    }
    console.error(`check-helper: ${error.message} (--help explains)`);
    return 2;
  }
}
