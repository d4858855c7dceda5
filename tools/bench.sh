#!/usr/bin/env bash
# bench.sh: runs the benchmarks and prints one table. Runs in the build root.
set -euo pipefail

build_dir=build/ubuntu-ci-x86_64
results=build/bench
mkdir -p "$results"

tools/build.sh "${build_dir##*/}"
tools/install-node-modules.sh

QT_QPA_PLATFORM=offscreen "$build_dir/tests/bench/bench_event_stream" \
	--benchmark_out="$results/event-stream.json" --benchmark_out_format=json
QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh "$build_dir/tests/bench/bench_press_to_save" -silent |
	tee "$results/press-to-save.log"
KESTRUNE_BUILD_DIR=$PWD/$build_dir node tests/bench/obs.mjs | tee "$results/obs.log"

node tests/bench/table.mjs "$results"
