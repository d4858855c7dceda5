#!/usr/bin/env bash
# The main job as Windows does it: builds the module and the sample helper for Windows, has OBS's own libobs record under
# Wine, presses the hotkey, and tells where the Short and pictures of the dock are. Runs in the Windows root; ./run sets
# KESTRUNE_QT and KESTRUNE_WINDOWS_OBS.
set -euo pipefail

export KESTRUNE_WINDOWS_BUILD=$PWD/build/windows-mingw
folder=$PWD/build/demo-windows
rm -rf "$folder"
mkdir -p "$folder"

echo "demo: building for Windows (log: $folder/build.log)"
tools/build.sh windows-mingw --target unit_windows >"$folder/build.log" 2>&1

echo "demo: under Wine, OBS's libobs records, Ctrl+Shift+C is pressed, the sample helper makes the Short (a minute)"
export KESTRUNE_KEPT="Z:${folder//\//\\}"
if ! tools/with-xvfb.sh tools/windows/under-wine.sh tools/windows/wine.sh \
	"$KESTRUNE_WINDOWS_BUILD/tests/unit/unit_windows.exe" main_job 'theHotkeyMakesAShort:blanks and foreign letters' \
	>"$folder/test.log" 2>&1; then
	tail -n 15 "$folder/test.log" >&2
	echo "demo: failed (log: $folder/test.log)" >&2
	exit 1
fi
find "$folder" -name '*.mp4' -printf 'demo: Short: %p\n'
find "$folder" -name '*.png' -printf 'demo: screenshot: %p\n' | sort
