#!/usr/bin/env bash
# test.sh [unit] [sanitize] [obs]: builds and runs these tests (all of them when none is named). Runs in the build root.
set -euo pipefail

# Unit tests, with warnings as errors.
unit()
{
	tools/build.sh ubuntu-ci-x86_64 &&
		QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh ctest --preset ubuntu-ci-x86_64
}

# The same tests under AddressSanitizer and UBSan.
sanitize()
{
	tools/build.sh sanitize &&
		QT_QPA_PLATFORM=offscreen tools/with-xvfb.sh ctest --preset sanitize
}

install_node_modules()
(
	cd tests/obs
	# npm ci takes its time even when there is nothing to do.
	if ! cmp --silent package-lock.json node_modules/.installed-lock.json; then
		npm ci --no-audit --no-fund && cp package-lock.json node_modules/.installed-lock.json
	fi
)

# End-to-end tests in the real OBS.
obs()
{
	tools/build.sh ubuntu-ci-x86_64 && install_node_modules &&
		KESTRUNE_BUILD_DIR=$PWD/build/ubuntu-ci-x86_64 node --test --test-concurrency=1 tests/obs/*.test.mjs
}

run_stage()
{
	case $1 in
	unit) unit ;;
	sanitize) sanitize ;;
	obs) obs ;;
	*)
		echo "test: no tests are called '$1'; there are: unit, sanitize, obs" >&2
		return 2
		;;
	esac
}

stages=("$@")
if ((${#stages[@]} == 0)); then
	stages=(unit sanitize obs)
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
