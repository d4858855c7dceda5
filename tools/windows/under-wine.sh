#!/usr/bin/env bash
# under-wine.sh COMMAND...: runs a command whose Windows programs find their DLLs, in a Windows installation of its own.
# Runs in the Windows root, with an X server.
set -euo pipefail

# windows_path FOLDER...: prints Wine's names of these folders, separated as Windows does.
windows_path()
{
	local folder joined=
	for folder; do
		joined+="Z:${folder//\//\\};"
	done
	printf '%s' "${joined%;}"
}

compiler_libraries=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
WINEPATH=$(windows_path "$KESTRUNE_QT/bin" "$KESTRUNE_WINDOWS_BUILD/tests/support/fake_obs" "$compiler_libraries" \
	/usr/x86_64-w64-mingw32/lib)
WINEPREFIX=$(mktemp -d)
# Wine keeps variables for Qt on this machine from its programs, except with this prefix: so they show real windows of
# Windows, whatever the tests ask for here, and print their results instead of giving them to a debugger.
export WINEQT_FORCE_STDERR_LOGGING=1
# No offers to install .NET or a browser engine.
export WINEPATH WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
trap 'wineserver --kill || true; wineserver --wait || true; rm -rf "$WINEPREFIX"' EXIT

wineboot --init
"$@"
