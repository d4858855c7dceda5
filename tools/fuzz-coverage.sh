#!/usr/bin/env bash
# fuzz-coverage.sh TARGET...: runs these fuzz targets once with each input of their corpora and of what ./run fuzz has
# found, and prints how many lines of each folder of the sources they reach. Called by fuzz.sh.
set -euo pipefail

if [[ -z ${DISPLAY:-} ]]; then
	tools/build.sh coverage
	exec tools/with-xvfb.sh "$0" "$@"
fi

programs=$PWD/build/coverage/tests/fuzz
profiles=$PWD/build/coverage/profiles
rm -rf "$profiles"
mkdir -p "$profiles"
TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

objects=()
for target; do
	found=build/fuzz/results/$target/corpus
	mkdir -p "$found"
	LLVM_PROFILE_FILE=$profiles/$target.profraw \
		"$programs/fuzz_$target" "tests/fuzz/corpus/$target" "$found" >"$profiles/$target.log" 2>&1 ||
		echo "$target ended early, and is left out: see build/coverage/profiles/$target.log" >&2
	objects+=(-object "$programs/fuzz_$target")
done

llvm-profdata merge -o "$profiles/all.profdata" "$profiles"/*.profraw
llvm-cov export -summary-only -instr-profile "$profiles/all.profdata" "${objects[@]}" >"$profiles/all.json"

# count PATTERN: counts by what this part of a file's path is.
count()
{
	jq --raw-output --arg here "$PWD/" --arg pattern "$1" '
		[.data[0].files[] | .summary.lines + {path: .filename | ltrimstr($here)}
			| select(.path | test("^(obs-plugin|sample-helper)/"))
			| .path |= capture($pattern).part]
		| group_by(.path)[]
		| {path: .[0].path, covered: map(.covered) | add, count: map(.count) | add}
		| "| \(.path) | \(.covered) of \(.count) | \(.covered * 100 / .count | floor) % |"
	' "$profiles/all.json"
}

echo "| folder | lines reached | share |"
echo "|---|---|---|"
count '^(?<part>.*)/[^/]*$'
count '^(?<part>[^/]*)/'
