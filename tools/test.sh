#!/usr/bin/env bash
# test.sh [docs] [unit] [kit] [sanitize] [thread] [obs]: builds and runs these tests (all when none is named). Runs in
# the build root.
set -euo pipefail

# The user guide against the sources.
docs()
{
	node --test tests/docs/*.test.mjs
}

# Unit tests, with warnings as errors.
unit()
{
	tools/build.sh ubuntu-ci-x86_64 &&
		QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh ctest --preset ubuntu-ci-x86_64
}

# The kit for authors of helpers: the schema, and tools/check-helper.
kit()
{
	tools/build.sh ubuntu-ci-x86_64 && tools/install-node-modules.sh tools/helper-kit &&
		KESTRUNE_BUILD_DIR=$PWD/build/ubuntu-ci-x86_64 node --test tests/kit/*.test.mjs
}

# The same tests under AddressSanitizer and UBSan.
sanitize()
{
	tools/build.sh sanitize &&
		QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh ctest --preset sanitize
}

# What other threads may do to the module, under ThreadSanitizer.
thread()
{
	tools/build.sh thread &&
		QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh ctest --preset thread
}

# End-to-end tests in the real OBS.
obs()
{
	tools/build.sh ubuntu-ci-x86_64 && tools/install-node-modules.sh tools/obs &&
		KESTRUNE_BUILD_DIR=$PWD/build/ubuntu-ci-x86_64 node --test --test-concurrency=1 tests/obs/*.test.mjs
}

run_stage()
{
	case $1 in
	docs) docs ;;
	unit) unit ;;
	kit) kit ;;
	sanitize) sanitize ;;
	thread) thread ;;
	obs) obs ;;
	*)
		echo "test: no tests are called '$1'; there are: docs, unit, kit, sanitize, thread, obs" >&2
		return 2
		;;
	esac
}

stages=("$@")
if ((${#stages[@]} == 0)); then
	stages=(docs unit kit sanitize thread obs)
fi

status=0
summary=()
for stage in "${stages[@]}"; do
	result=passed
	SECONDS=0
	echo "== $stage"
	if ! run_stage "$stage"; then
		result=FAILED
		status=1
	fi
	summary+=("$(printf '%-10s %s after %s s' "$stage" "$result" "$SECONDS")")
done

echo "== Summary"
printf '%s\n' "${summary[@]}"
exit "$status"
