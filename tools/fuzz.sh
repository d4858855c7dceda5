#!/usr/bin/env bash
# fuzz.sh [TARGET...] [--seconds N]: runs these fuzz targets, or all, side by side for N seconds each. Runs in the build
# root.
set -euo pipefail

seconds=1800
targets=()
while (($# > 0)); do
	case $1 in
	--seconds)
		seconds=${2:-}
		if [[ ! $seconds =~ ^[1-9][0-9]*$ ]]; then
			echo "fuzz: --seconds needs a positive integer" >&2
			exit 2
		fi
		shift
		;;
	--*)
		echo "fuzz: unknown option $1" >&2
		exit 2
		;;
	*) targets+=("$1") ;;
	esac
	shift
done

known=()
for folder in tests/fuzz/corpus/*/; do known+=("$(basename "$folder")"); done
if ((${#targets[@]} == 0)); then
	targets=("${known[@]}")
fi
for target in "${targets[@]}"; do
	if [[ ! -d tests/fuzz/corpus/$target ]]; then
		echo "fuzz: unknown target '$target'; targets are: ${known[*]}" >&2
		exit 2
	fi
done

if [[ -z ${DISPLAY:-} ]]; then
	tools/build.sh fuzz
	exec tools/with-xvfb.sh "$0" "${targets[@]}" --seconds "$seconds"
fi

# The targets check for leaks themselves; at exit, Qt's caches would be reported.
export ASAN_OPTIONS=detect_leaks=1:leak_check_at_exit=0:detect_stack_use_after_return=1:allow_addr2line=1
export LSAN_OPTIONS=suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1

programs=$PWD/build/fuzz/tests/fuzz
results=$PWD/build/fuzz/results
TMPDIR=$(mktemp -d)
export TMPDIR
jobs=()
trap 'kill "${jobs[@]}" 2>/dev/null || true; rm -rf "$TMPDIR"' EXIT

# fuzz_one TARGET: adds to the corpus in results/TARGET/corpus and puts findings in results/TARGET. An input that takes
# 20 s counts as a hang.
fuzz_one()
{
	local result=$results/$1
	mkdir -p "$result/corpus"
	exec "$programs/fuzz_$1" -max_total_time="$seconds" -max_len=4096 -timeout=20 -rss_limit_mb=2048 \
		-detect_leaks=0 -print_final_stats=1 -artifact_prefix="$result/" "$result/corpus" "$PWD/tests/fuzz/corpus/$1" \
		>"$result/log" 2>&1
}

for target in "${targets[@]}"; do
	rm -rf "${results:?}/$target"/{crash,leak,timeout,oom}-*
	fuzz_one "$target" &
	jobs+=($!)
	echo "$target: up to $seconds s, log in build/fuzz/results/$target/log"
done

status=0
for index in "${!targets[@]}"; do
	target=${targets[index]}
	job=${jobs[index]}
	unset "jobs[index]"
	if wait "$job"; then
		echo "$target: no findings, $(grep -m 1 number_of_executed_units "$results/$target/log")"
	else
		status=1
		echo "$target: FINDINGS, see build/fuzz/results/$target/log"
		find "$results/$target" -maxdepth 1 -type f ! -name log -printf '    reproducer: %p\n'
	fi
done
exit "$status"
