#!/usr/bin/env bash
# wine.sh PROGRAM ARGUMENT...: runs a Windows program and ends with its code. Its output goes through a file: a helper
# program killed while it starts may leave a console process of Wine's behind, which holds the output open for ever, so
# that whoever waits for the end of a pipe would wait for ever too.
set -euo pipefail

output=$(mktemp)
trap 'rm -f "$output"' EXIT
wine "$@" >"$output" 2>&1 </dev/null &
tail --pid=$! --sleep-interval=0.1 --lines=+1 --follow "$output"
wait $!
