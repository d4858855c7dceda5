#!/usr/bin/env bash
# lint.sh [format] [cpp] [shell] [spelling] [FILE...]: runs these checks (all when none is named) on these files (all when
# none is named) without changing anything. Runs in the build root.
set -euo pipefail
source tools/sources.sh

checks=()
files=()
for argument; do
	case $argument in
	format | cpp | shell | spelling) checks+=("$argument") ;;
	*)
		if [[ ! -e $argument ]]; then
			echo "lint: '$argument' is neither a file nor a check; there are: format, cpp, shell, spelling" >&2
			exit 2
		fi
		files+=("${argument#"$PWD/"}")
		;;
	esac
done
if ((${#checks[@]} == 0)); then
	checks=(format cpp shell spelling)
fi

# Lets those names through that were asked for; names come and go with a NUL at their end.
wanted()
{
	if ((${#files[@]} == 0)); then
		cat
	else
		grep --null-data --fixed-strings --line-regexp --file=<(printf '%s\n' "${files[@]}") || true
	fi
}

check_format()
{
	cpp_sources | wanted | xargs -0 --no-run-if-empty clang-format --dry-run -Werror
}

# Sources include what Qt's moc generates. Headers are checked with the sources that include them.
check_cpp()
{
	local source patterns=()
	while IFS= read -r -d '' source; do
		if [[ $source == *.cpp ]]; then
			patterns+=("^$PWD/${source//./[.]}\$")
		fi
	done < <(cpp_sources | wanted)
	if ((${#patterns[@]} == 0)); then
		return
	fi
	tools/build.sh ubuntu-ci-x86_64 --target autogen &&
		run-clang-tidy -quiet -p build/ubuntu-ci-x86_64 -warnings-as-errors='*' \
			-extra-arg=-Wno-unknown-warning-option "${patterns[@]}"
}

check_shell()
{
	shell_scripts | wanted | xargs -0 --no-run-if-empty shellcheck --external-sources --check-sourced
}

check_spelling()
{
	text_files | wanted | xargs -0 --no-run-if-empty codespell
}

run_check()
{
	case $1 in
	format) check_format ;;
	cpp) check_cpp ;;
	shell) check_shell ;;
	spelling) check_spelling ;;
	esac
}

status=0
summary=()
for check in "${checks[@]}"; do
	result=passed
	if ! run_check "$check"; then
		result=FAILED
		status=1
	fi
	summary+=("$check: $result")
done

echo "== Summary"
printf '%s\n' "${summary[@]}"
exit "$status"
