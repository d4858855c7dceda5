# shellcheck shell=bash

# format_files write|check: formats the files on standard input (NUL-terminated), or lists the unformatted ones.
format_files()
{
	local file cpp=() cmake=() scripts=() status=0
	local clang_format=(clang-format -i) cmake_format=(cmake-format --in-place) prettier=(--write)
	if [[ $1 == check ]]; then
		clang_format=(clang-format --dry-run -Werror)
		cmake_format=(cmake-format --check)
		prettier=(--check)
	fi
	while IFS= read -r -d '' file; do
		case $file in
		*.cpp | *.hpp | *.h) cpp+=("$file") ;;
		*.cmake | CMakeLists.txt | */CMakeLists.txt) cmake+=("$file") ;;
		*) scripts+=("$file") ;;
		esac
	done
	if ((${#cpp[@]} > 0)); then
		"${clang_format[@]}" "${cpp[@]}" || status=1
	fi
	if ((${#cmake[@]} > 0)); then
		"${cmake_format[@]}" -- "${cmake[@]}" || status=1
	fi
	if ((${#scripts[@]} > 0)); then
		from_npm prettier --log-level warn "${prettier[@]}" "${scripts[@]}" || status=1
	fi
	return "$status"
}

# from_npm PROGRAM ARGUMENT...: runs a program from tools/lint's packages.
from_npm()
{
	tools/install-node-modules.sh tools/lint && "tools/lint/node_modules/.bin/$1" "${@:2}"
}
