import js from "@eslint/js";
import globals from "globals";

export default [
  js.configs.recommended,
  {
    // Scripts that are called by their name alone have no ending; which files are looked at, the caller says.
    files: ["**/*.mjs", "**/!(*.*)"],
    languageOptions: { globals: globals.nodeBuiltin },
    linterOptions: { reportUnusedDisableDirectives: "error" },
  },
];
