#!/usr/bin/env bash
# check-package.sh BUILD_DIR: checks that the Windows package has OBS's layout. MinGW built this one, for tests only.
# Runs in the Windows root.
set -euo pipefail

build_dir=$1
version=$(jq -r .version buildspec.json)

flock "build/.${build_dir##*/}.lock" cpack --config "$build_dir/CPackConfig.cmake"
diff <(cmake -E tar tf "$build_dir/packages/kestrune-$version-windows-x64.zip" | grep -v '/$' | sort) - <<'FILES'
kestrune/bin/64bit/kestrune.dll
kestrune/data/LICENSE.txt
kestrune/data/helper/README.txt
kestrune/data/locale/en-US.ini
FILES
echo "check-package: files as expected"
