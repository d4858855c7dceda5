#!/usr/bin/env bash
# screenshots.sh [SUBJECT...]: makes the user guide's pictures. Runs in the build root.
set -euo pipefail

build_dir=build/ubuntu-ci-x86_64

tools/build.sh "${build_dir##*/}"
tools/install-node-modules.sh tools/obs
tools/install-node-modules.sh tools/screenshots
KESTRUNE_BUILD_DIR=$PWD/$build_dir node tools/screenshots/screenshots.mjs "$@"
