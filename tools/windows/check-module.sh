#!/usr/bin/env bash
# check-module.sh DLL: checks that the module exports exactly what OBS needs, imports only DLLs that OBS or, for tests,
# the compiler brings, and states its version. Runs in the Windows root.
set -euo pipefail

dll=$1
version=$(jq -r .version buildspec.json)

# compare WHAT WANTED FOUND: fails if the lists differ.
compare()
{
	if ! diff <(sort -u <<<"$2") <(sort -u <<<"$3"); then
		echo "check-module: $1 of $dll differ (< expected, > found)" >&2
		exit 1
	fi
}

listing=$(x86_64-w64-mingw32-objdump -p "$dll")

compare exports "$(sed -n 's/^\t\(obs_\w*\)$/\1/p' obs-plugin/module/exports.def)" \
	"$(sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/ s/^\t\[.* //p' <<<"$listing")"

# Windows's DLLs are all listed, so that a new one is a decision.
allowed='obs.dll obs-frontend-api.dll Qt6Core.dll Qt6Gui.dll Qt6Widgets.dll KERNEL32.dll SHELL32.dll
	msvcrt.dll libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll'
imports=$(sed -n 's/^\tDLL Name: //p' <<<"$listing")
for library in $imports; do
	if [[ " ${allowed//[$'\n\t']/ } " != *" $library "* ]]; then
		echo "check-module: $dll must not import $library" >&2
		exit 1
	fi
done

# The version is UTF-16 text.
if ! tr -d '\0' <"$dll" | grep -a "FileVersion$version" >/dev/null; then
	echo "check-module: $dll does not state its version, $version" >&2
	exit 1
fi
echo "check-module: $(wc -w <<<"$imports") libraries, exports and version as expected"
