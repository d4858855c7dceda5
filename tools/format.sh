#!/usr/bin/env bash
# Formats all C++ files, Node.js scripts and CMake files. Runs in the build root.
set -euo pipefail
source tools/sources.sh
source tools/formatters.sh

formatted_files | format_files write
