# shellcheck shell=bash
# The files that formatting and checks are about.

# Prints our C++ files, tracked or new, each ended by a NUL.
cpp_sources()
{
	git ls-files -z --cached --others --exclude-standard -- '*.cpp' '*.hpp' '*.h'
}

# Prints our CMake files, tracked or new, each ended by a NUL.
cmake_sources()
{
	git ls-files -z --cached --others --exclude-standard -- '*.cmake' CMakeLists.txt '*/CMakeLists.txt'
}

# Prints all of our files, tracked or new, each ended by a NUL; what is no text is for the reader to skip.
text_files()
{
	git ls-files -z --cached --others --exclude-standard
}

# called_scripts INTERPRETER: prints our scripts that people or programs call and that this (a regular expression) runs,
# whatever they are named, each ended by a NUL.
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

# Those that are only sourced make sense, to people and to shellcheck, in the scripts that source them.
shell_scripts()
{
	called_scripts '(ba)?sh'
}

# Prints our scripts for Node.js, called or imported, each ended by a NUL.
node_scripts()
{
	{
		git ls-files -z --cached --others --exclude-standard -- '*.mjs'
		called_scripts node
	} | sort --zero-terminated --unique
}

# Prints the files that have a formatter, each ended by a NUL.
formatted_files()
{
	cpp_sources
	node_scripts
	cmake_sources
}
