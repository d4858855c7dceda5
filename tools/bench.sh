#!/usr/bin/env bash
# bench.sh [--long]: runs the benchmarks and prints a table; with --long for more starts of OBS, key presses and
# seconds. Runs in the build root.
set -euo pipefail

starts=5 presses=50 busy_s=36 short_s=6
if [[ ${1:-} == --long ]]; then
	starts=20 presses=400 busy_s=600 short_s=60
fi

build_dir=build/ubuntu-ci-x86_64
tools/build.sh "${build_dir##*/}" --target end_to_end bench
tools/install-node-modules.sh tools/obs
export KESTRUNE_BUILD_DIR=$PWD/$build_dir

mkdir -p build/bench
{
	echo "| what | Kestrune | beside | goal |"
	echo "|---|---|---|---|"
	node tests/bench/starts.mjs "$starts"
	node tests/bench/presses.mjs "$presses"
	node tests/bench/holds.mjs "$busy_s"
	node tests/bench/sections.mjs
	node tests/bench/shorts.mjs "$short_s"
} | tee build/bench/table.md
echo "bench.sh: took $SECONDS s, load $(cut -d' ' -f1-3 /proc/loadavg)" >&2
