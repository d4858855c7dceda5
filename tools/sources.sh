# shellcheck shell=bash
# The files that formatting and checks are about.

# Prints our C++ files, tracked or new, each ended by a NUL.
cpp_sources()
{
	git ls-files -z --cached --others --exclude-standard -- '*.cpp' '*.hpp' '*.h'
}

# Prints all of our files, tracked or new, each ended by a NUL; what is no text is for the reader to skip.
text_files()
{
	git ls-files -z --cached --others --exclude-standard
}

# Prints our shell scripts that people or programs call, whatever they are named, each ended by a NUL. Those that are
# only sourced make sense, to people and to shellcheck, in the scripts that source them.
shell_scripts()
{
	local file first_line
	while IFS= read -r -d '' file; do
		if [[ ! -f $file || ! -x $file ]]; then
			continue
		fi
		IFS= read -r first_line <"$file" || true
		if [[ $first_line =~ ^#!.*[/[:space:]](ba)?sh([[:space:]]|$) ]]; then
			printf '%s\0' "$file"
		fi
	done < <(text_files)
}
