#!/usr/bin/env bash
# Checks format, C++ and shell scripts without changing anything. Runs in the build root.
set -euo pipefail
source tools/sources.sh

check_format()
{
	cpp_sources | xargs -0 --no-run-if-empty clang-format --dry-run -Werror
}

# The build comes first: sources include what Qt's moc generates.
check_cpp()
{
	tools/build.sh ubuntu-ci-x86_64 &&
		run-clang-tidy -quiet -p build/ubuntu-ci-x86_64 -warnings-as-errors='*' \
			-extra-arg=-Wno-unknown-warning-option "^$PWD/(obs-plugin|sample-helper|tests|bench)/"
}

check_shell()
{
	shell_scripts | xargs -0 --no-run-if-empty shellcheck --external-sources --check-sourced
}

status=0
summary=()

# note CHECK RESULT
note()
{
	summary+=("$1: $2")
	if [[ $2 != passed ]]; then
		status=1
	fi
}

if check_format; then note format passed; else note format FAILED; fi
if check_cpp; then note C++ passed; else note C++ FAILED; fi
if check_shell; then note shell passed; else note shell FAILED; fi

echo "== Summary"
printf '%s\n' "${summary[@]}"
exit "$status"
