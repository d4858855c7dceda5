// What the person reads: one line per command or finding, as soon as it is known, and a sum at the end.

import { isError } from "./findings.mjs";

const indent = " ".repeat(10);

function inSeconds(ms) {
  return `${(ms / 1000).toFixed(2)} s`;
}

/** The lines of a run's output, each as text; what follows the last newline is marked. */
function outputLines({ lines, rest }) {
  const texts = lines.map(({ bytes }) => `out  ${bytes.toString()}`);
  return rest.length > 0 ? [...texts, `out  ${rest.toString()} (without a newline)`] : texts;
}

/** Merges equal findings of several runs, notes which occur only in overlapping runs, and puts errors first. */
function summedUp(findings) {
  const alone = new Set(findings.filter(({ atOnce }) => !atOnce).map(({ text }) => text));
  const unique = new Map(findings.map((finding) => [finding.text, finding]));
  const summary = [...unique.values()].map(({ severity, text, effect }) => ({
    severity,
    text: alone.has(text) ? text : `with two runs at the same time: ${text}`,
    effect,
  }));
  return [...summary.filter(isError), ...summary.filter((finding) => !isError(finding))];
}

export class Report {
  #say;
  #counts = { error: 0, warning: 0, "left out": 0 };
  #notRun = [];
  /** By text of an error: the command that it was first seen after. */
  #seen = new Map();

  /** `say` takes one line after the other. */
  constructor(say) {
    this.#say = say;
  }

  get errors() {
    return this.#counts.error;
  }

  #line(severity, text) {
    this.#say(`${severity.padEnd(indent.length)}${text}`);
  }

  #tell(subject, finding) {
    const { severity, text, effect } = finding;
    const before = isError(finding) ? this.#seen.get(text) : undefined;
    if (before) {
      this.#line(severity, `${subject}: the same as after ${before}`);
      return;
    }
    this.#counts[severity] += 1;
    this.#seen.set(text, subject);
    this.#line(severity, `${subject}: ${text}`);
    if (effect) {
      this.#say(indent + effect);
    }
  }

  /** What was found about a command, or about the program itself. */
  tellFindings(subject, findings) {
    const summary = summedUp(findings);
    if (summary.length === 0) {
      this.#line("ok", subject);
    }
    summary.forEach((finding) => this.#tell(subject, finding));
  }

  /** A `reason` is left out where the report has named it already. */
  tellSkipped(command, reason) {
    this.#notRun.push(command);
    if (reason) {
      this.#line("skipped", `${command}: ${reason}`);
    }
  }

  /** Something that the person needs to do meanwhile. */
  ask(text) {
    this.#line("please", text);
  }

  tellRun(args, run) {
    const { exitCode, signal, duration_ms, errorOutput } = run;
    this.#line("run", args.join(" "));
    const errorLines = errorOutput.split("\n").filter((line) => line !== "");
    for (const line of [...outputLines(run), ...errorLines.map((each) => `err  ${each}`)]) {
      this.#say(indent + line);
    }
    this.#say(`${indent}end  ${signal ?? `exit code ${exitCode}`} after ${inSeconds(duration_ms)}`);
  }

  tellEnd(shorts) {
    shorts.forEach((file) => this.#say(`new Short: ${file}`));
    this.#say(
      `errors: ${this.#counts.error}, warnings: ${this.#counts.warning}, left out: ${this.#counts["left out"]}, ` +
        `not run: ${this.#notRun.join(" ") || "none"}`,
    );
  }
}
