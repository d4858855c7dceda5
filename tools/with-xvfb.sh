#!/usr/bin/env bash
# with-xvfb.sh COMMAND...: runs a command with its own virtual X server.
set -euo pipefail

folder=$(mktemp -d)
mkfifo "$folder/number"

# Without -noreset the server restarts when its last client leaves, and a test that connects then fails.
Xvfb -displayfd 3 -noreset -nolisten tcp -screen 0 1280x1024x24 3>"$folder/number" 2>"$folder/log" &
server=$!
trap 'kill "$server" 2>/dev/null || true; wait "$server" || true; rm -rf "$folder"' EXIT

if ! read -r number <"$folder/number"; then
	cat "$folder/log" >&2
	exit 1
fi
DISPLAY=:$number "$@"
