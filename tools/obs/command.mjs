import { execFile } from "node:child_process";
import { promisify } from "node:util";

const execFileAsync = promisify(execFile);

/** Runs a program to its end; returns its standard output or throws its standard error. */
export async function run(program, args, { env = process.env, limit_ms = 120_000 } = {}) {
  try {
    const { stdout } = await execFileAsync(program, args, { env, timeout: limit_ms, maxBuffer: 64 * 1024 * 1024 });
    return stdout;
  } catch (error) {
    const reason = error.killed ? `no end within ${limit_ms} ms` : (error.stderr || error.message).trim();
    throw new Error(`${program} ${args.join(" ")}: ${reason}`, { cause: error });
  }
}
