#!/usr/bin/env bash
# Cross-builds everything, checks module and package, and runs the tests under Wine. ./run sets KESTRUNE_QT and
# KESTRUNE_WINDOWS_OBS; arguments go to ctest. Runs in the Windows root.
set -euo pipefail

export KESTRUNE_WINDOWS_BUILD=$PWD/build/windows-mingw

tools/build.sh windows-mingw
tools/windows/check-module.sh "$KESTRUNE_WINDOWS_BUILD/kestrune/bin/64bit/kestrune.dll"
tools/windows/check-package.sh "$KESTRUNE_WINDOWS_BUILD"
tools/with-xvfb.sh tools/windows/under-wine.sh ctest --preset windows-mingw "$@"
