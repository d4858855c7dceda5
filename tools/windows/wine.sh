#!/usr/bin/env bash
# wine.sh PROGRAM ARGUMENT...: runs a Windows program and returns its exit code. Output goes through a file: a helper
# killed during its start may leave a Wine console process that holds a pipe open forever.
set -euo pipefail

output=$(mktemp)
trap 'rm -f "$output"' EXIT
wine "$@" >"$output" 2>&1 </dev/null &
tail --pid=$! --sleep-interval=0.1 --lines=+1 --follow "$output"
wait $!
