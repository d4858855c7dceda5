#!/usr/bin/env bash
# Formats all C++ files in place. Runs in the build root.
set -euo pipefail
source tools/sources.sh

cpp_sources | xargs -0 --no-run-if-empty clang-format -i
