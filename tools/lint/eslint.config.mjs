import js from "@eslint/js";
import globals from "globals";

export default [
  js.configs.recommended,
  {
    // Executable scripts have no extension; the command line names the files.
    files: ["**/*.mjs", "**/!(*.*)"],
    languageOptions: { globals: globals.nodeBuiltin },
    linterOptions: { reportUnusedDisableDirectives: "error" },
  },
];
