# shellcheck shell=bash
# The files to format and check, tracked or new, each name NUL-terminated.

cpp_sources()
{
	git ls-files -z --cached --others --exclude-standard -- '*.cpp' '*.hpp' '*.h'
}

cmake_sources()
{
	git ls-files -z --cached --others --exclude-standard -- '*.cmake' CMakeLists.txt '*/CMakeLists.txt'
}

workflow_files()
{
	git ls-files -z --cached --others --exclude-standard -- '.github/workflows/*.yaml'
}

# Includes binary files.
text_files()
{
	git ls-files -z --cached --others --exclude-standard
}

# called_scripts INTERPRETER: prints the executable scripts for this interpreter (a regular expression).
called_scripts()
{
	local file first_line
	while IFS= read -r -d '' file; do
		if [[ ! -f $file || ! -x $file ]]; then
			continue
		fi
		IFS= read -r first_line <"$file" || true
		if [[ $first_line =~ ^#!.*[/[:space:]]($1)([[:space:]]|$) ]]; then
			printf '%s\0' "$file"
		fi
	done < <(text_files)
}

# Sourced files are checked with the scripts that source them.
shell_scripts()
{
	called_scripts '(ba)?sh'
}

# Executable or imported.
node_scripts()
{
	{
		git ls-files -z --cached --others --exclude-standard -- '*.mjs'
		called_scripts node
	} | sort --zero-terminated --unique
}

formatted_files()
{
	cpp_sources
	node_scripts
	cmake_sources
}
