#!/usr/bin/env bash
# build.sh PRESET [OPTION...]: configures and builds a CMake preset in build/PRESET. Takes the options of cmake --build,
# such as --target sample-helper. Runs in the build root.
set -euo pipefail

preset=$1
shift
build_dir=build/$preset
made_in="$KESTRUNE_ROOT_ID in $PWD"

# Two builds in one folder would disturb each other. The lock is beside it, because the folder may be removed.
mkdir -p build
exec {lock}>"build/.$preset.lock"
if ! flock --nonblock "$lock"; then
	echo "build.sh: waiting for another ./run, which is building in $build_dir"
	flock "$lock"
fi

# Object files of another root do not fit this one's headers and libraries.
if [[ -d $build_dir && $(cat "$build_dir/.made-in" 2>/dev/null) != "$made_in" ]]; then
	rm -rf "$build_dir"
fi
mkdir -p "$build_dir"
printf '%s\n' "$made_in" >"$build_dir/.made-in"

# Checkouts and presets share ccache, wherever they are. Precompiled headers need the sloppiness.
if command -v ccache >/dev/null; then
	export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
	export CCACHE_SLOPPINESS=pch_defines,time_macros
fi

TIMEFORMAT="build.sh: $preset took %R s, of the processors %U s and %S s for the system"
time {
	cmake --preset "$preset"
	cmake --build --preset "$preset" "$@"
}
