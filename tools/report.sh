# shellcheck shell=bash
# Progress of the set-up: one line per step, and the reason of a failure.

# On standard error: the output of `./run shell COMMAND` stays the command's.
say()
{
	printf '%s\n' "$*" >&2
}

fail()
{
	say "run: $*"
	exit 1
}

# step TEXT ADVICE COMMAND...: runs a command with its output in $setup_log.
step()
{
	local text=$1 advice=$2
	shift 2
	say "$text…"
	if "$@" >>"$setup_log" 2>&1 </dev/null; then
		return
	fi
	say "Last lines of $setup_log:"
	tail -n 15 "$setup_log" | sed 's/^/    /' >&2
	fail "failed: $text. $advice"
}
