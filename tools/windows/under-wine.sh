#!/usr/bin/env bash
# under-wine.sh COMMAND...: runs a command in a fresh Wine installation where programs find their DLLs. Runs in the
# Windows root, with an X server.
set -euo pipefail

# windows_path FOLDER...: prints the folders as a Windows search path.
windows_path()
{
	local folder joined=
	for folder; do
		joined+="Z:${folder//\//\\};"
	done
	printf '%s' "${joined%;}"
}

compiler_libraries=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
# The tests' frontend is found before OBS's.
WINEPATH=$(windows_path "$KESTRUNE_QT/bin" "$KESTRUNE_WINDOWS_BUILD/tests/support" "$KESTRUNE_WINDOWS_OBS/bin" \
	"$compiler_libraries" /usr/x86_64-w64-mingw32/lib)
WINEPREFIX=$(mktemp -d)
# Wine passes Qt variables to its programs only with this prefix. So tests show real windows, whatever they ask for
# here, and this one makes them print results instead of sending them to a debugger.
export WINEQT_FORCE_STDERR_LOGGING=1
# Wine must not offer to install .NET or a browser engine.
export WINEPATH WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
trap 'wineserver --kill || true; wineserver --wait || true; rm -rf "$WINEPREFIX"' EXIT

wineboot --init
"$@"
