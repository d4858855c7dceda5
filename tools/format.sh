#!/usr/bin/env bash
# Formats all C++ files, scripts for Node.js and CMake files in place. Runs in the build root.
set -euo pipefail
source tools/sources.sh
source tools/formatters.sh

formatted_files | format_files write
