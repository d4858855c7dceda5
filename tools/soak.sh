#!/usr/bin/env bash
# soak.sh [hostile] [long] [exit]: long runs, by default all. Runs in the build root.
set -euo pipefail

build_dir=build/ubuntu-ci-x86_64
results=build/soak
mkdir -p "$results"

hostile()
{
	run_full hostile_helper
}

# Eight hours of a stream without the waiting.
long()
{
	KESTRUNE_SOAK_TABLE=$PWD/$results/long-stream.csv run_full long_stream &&
		node tools/soak-graph.mjs "$results/long-stream.csv" "$results/long-stream.svg"
}

exit_of_obs()
{
	tools/install-node-modules.sh tools/obs && KESTRUNE_BUILD_DIR=$PWD/$build_dir node tests/soak/exit.mjs
}

run_full()
{
	# QtTest's default limit is 5 minutes.
	KESTRUNE_FULL_SOAK=1 QTEST_FUNCTION_TIMEOUT=3600000 QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh \
		"$build_dir/tests/soak/soak" "$1" -maxwarnings 0 2>&1 | tee "$results/$1.log"
}

tools/build.sh "${build_dir##*/}"
if (($# == 0)); then
	set -- hostile long exit
fi
for run in "$@"; do
	case $run in
	hostile | long) "$run" ;;
	exit) exit_of_obs ;;
	*)
		echo "soak: unknown run '$run'; runs are: hostile, long, exit" >&2
		exit 2
		;;
	esac
done
