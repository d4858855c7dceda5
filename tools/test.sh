#!/usr/bin/env bash
# test.sh [STAGE [NAME...]]...: builds and runs the tests of these stages (docs, unit, kit, sanitize, thread, obs), by
# default all of them. NAME limits a stage to a test file or a folder of tests/unit. Runs in the build root.
set -euo pipefail
shopt -s nullglob

stages=(docs unit kit sanitize thread obs)
plain=ubuntu-ci-x86_64

docs()
{
	node_tests docs "$@"
}

unit()
{
	unit_tests "$plain" "$@"
}

kit()
{
	tools/build.sh "$plain" --target sample-helper && tools/install-node-modules.sh tests/kit &&
		tools/install-node-modules.sh tools/lint && tools/install-node-modules.sh tools/obs && node_tests kit "$@"
}

sanitize()
{
	unit_tests sanitize "$@"
}

thread()
{
	tools/build.sh thread && run_ctest thread
}

obs()
{
	tools/build.sh "$plain" --target end_to_end && tools/install-node-modules.sh tools/obs &&
		node_tests obs --test-concurrency=1 "$@"
}

run_ctest()
{
	QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh ctest --preset "$@"
}

# unit_tests PRESET NAME...: builds only the programs with these tests.
unit_tests()
{
	local preset=$1 name file files=() folder targets=() pattern=
	shift
	for name; do
		if [[ -d tests/unit/$name ]]; then
			files=("tests/unit/$name"/{,*/}*.cpp)
		else
			files=(tests/unit/{,*/,*/*/}"$name.cpp")
			[[ -e ${files[0]} ]] || files=("${files[@]:1}")
		fi
		if ((${#files[@]} == 0)); then
			echo "test: no unit test '$name': neither a file nor a folder in tests/unit" >&2
			return 2
		fi
		for file in "${files[@]}"; do
			folder=${file#tests/unit/}
			folder=${folder%%/*}
			targets+=("unit_${folder//-/_}")
			pattern+="${pattern:+|}^${folder}[.]$(basename "$file" .cpp)\$"
		done
	done
	if (($# == 0)); then
		tools/build.sh "$preset" && run_ctest "$preset"
	else
		tools/build.sh "$preset" --target "${targets[@]}" && run_ctest "$preset" --tests-regex "$pattern"
	fi
}

# node_tests FOLDER OPTION... NAME...: runs tests/FOLDER/NAME.test.mjs, by default all.
node_tests()
{
	local folder=tests/$1 argument options=() files=()
	shift
	for argument; do
		if [[ $argument == --* ]]; then
			options+=("$argument")
		elif [[ -f $folder/$argument.test.mjs ]]; then
			files+=("$folder/$argument.test.mjs")
		else
			echo "test: no test $folder/$argument.test.mjs" >&2
			return 2
		fi
	done
	if ((${#files[@]} == 0)); then
		files=("$folder"/*.test.mjs)
	fi
	KESTRUNE_BUILD_DIR=$PWD/build/$plain node --test "${options[@]}" "${files[@]}"
}

run_stage()
{
	local stage=$1
	shift
	case $stage in
	docs) docs "$@" ;;
	unit) unit "$@" ;;
	kit) kit "$@" ;;
	sanitize) sanitize "$@" ;;
	thread) thread ;;
	obs) obs "$@" ;;
	esac
}

is_stage()
{
	[[ " ${stages[*]} " == *" $1 "* ]]
}

if (($# == 0)); then
	set -- "${stages[@]}"
elif ! is_stage "$1"; then
	echo "test: unknown stage '$1'; stages are: ${stages[*]}" >&2
	exit 2
fi

status=0
summary=()
while (($# > 0)); do
	stage=$1
	shift
	names=()
	while (($# > 0)) && ! is_stage "$1"; do
		names+=("$1")
		shift
	done
	result=passed
	SECONDS=0
	echo "== $stage"
	if ! run_stage "$stage" "${names[@]}"; then
		result=FAILED
		status=1
	fi
	summary+=("$(printf '%-10s %s after %s s' "$stage" "$result" "$SECONDS")")
done

echo "== Summary"
printf '%s\n' "${summary[@]}"
exit "$status"
