#!/usr/bin/env bash
# bench.sh [BUSY_S] [IDLE_S]: runs the benchmarks and prints a table. OBS is watched BUSY_S seconds with a busy module
# and IDLE_S in each of three idle states. Runs in the build root.
set -euo pipefail

busy_s=${1:-120}
idle_s=${2:-120}

build_dir=build/ubuntu-ci-x86_64
results=build/bench
mkdir -p "$results"

tools/build.sh "${build_dir##*/}"
tools/install-node-modules.sh tools/obs

for subject in event_stream preview; do
	QT_QPA_PLATFORM=offscreen "$build_dir/tests/bench/bench_$subject" \
		--benchmark_out="$results/$subject.json" --benchmark_out_format=json
done
QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh "$build_dir/tests/bench/bench_press_to_save" press_to_save -silent |
	tee "$results/press_to_save.log"

export KESTRUNE_BUILD_DIR=$PWD/$build_dir
node tests/bench/starts.mjs | tee "$results/starts.log"
node tests/bench/stalls.mjs "$busy_s" | tee "$results/stalls.log"
node tests/bench/idle.mjs "$idle_s" | tee "$results/idle.log"

node tests/bench/table.mjs "$results"
