#!/usr/bin/env bash
# soak.sh [hostile] [long] [faults] [exit] [day [HOURS]]: long runs, by default all but the day. Runs in the build root.
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

faults()
{
	KESTRUNE_FULL_SOAK=1 QTEST_FUNCTION_TIMEOUT=3600000 "$build_dir/tests/unit/sample-helper/unit_sample_helper" \
		storage_faults -maxwarnings 0 2>&1 | tee "$results/faults.log"
}

exit_of_obs()
{
	tools/install-node-modules.sh tools/obs && KESTRUNE_BUILD_DIR=$PWD/$build_dir node tests/soak/exit.mjs
}

# A day on air. The disks to fill are small ones in memory that no other process sees.
day()
{
	local disks=$PWD/$results/day-disks
	mkdir -p "$disks/replays" "$disks/shorts"
	tools/install-node-modules.sh tools/obs
	# shellcheck disable=SC2016 # the inner shell expands them
	KESTRUNE_BUILD_DIR=$PWD/$build_dir unshare --map-root-user --mount bash -euc '
		for disk in "$1"/*; do mount -t tmpfs -o size=128m day "$disk"; done
		exec node tests/soak/day.mjs "${@:2}"' \
		day "$disks" "$PWD/$results" "$disks" "$@" 2>&1 | tee "$results/day.log"
}

run_full()
{
	# QtTest's default limit is 5 minutes.
	KESTRUNE_FULL_SOAK=1 QTEST_FUNCTION_TIMEOUT=3600000 QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh \
		"$build_dir/tests/soak/soak" "$1" -maxwarnings 0 2>&1 | tee "$results/$1.log"
}

tools/build.sh "${build_dir##*/}"
if (($# == 0)); then
	set -- hostile long faults exit
fi
while (($# > 0)); do
	run=$1
	shift
	case $run in
	hostile | long | faults) "$run" ;;
	exit) exit_of_obs ;;
	day)
		hours=()
		if [[ ${1:-} =~ ^[0-9.]+$ ]]; then
			hours=("$1")
			shift
		fi
		day "${hours[@]}"
		;;
	*)
		echo "soak: unknown run '$run'; runs are: hostile, long, faults, exit, day" >&2
		exit 2
		;;
	esac
done
