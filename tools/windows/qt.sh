# shellcheck shell=bash
# Qt for MinGW, which Debian does not package: built once per recipe and root, and kept beside the roots.

qt_recipe=(tools/windows/qt-recipe.sh cmake/mingw-w64.cmake)

# Prints ninja's progress in steps of 10 %.
show_progress()
{
	awk -F '[][/]' '$2 ~ /^[0-9]+$/ && $3 > 100 && int(10 * $2 / $3) > shown {
		shown = int(10 * $2 / $3); print "  " 10 * shown " %" > "/dev/stderr"
	}'
}

# errexit is off here, so each step checks for failure.
build_qt()
{
	local new=$cache/qt-mingw.new
	rm -rf "$new"
	mkdir "$new" && cp "${qt_recipe[@]}" "$new" || return
	extra_writable=("$new")
	in_root tools/windows/qt-recipe.sh "$new" "$new/installed" 2>&1 | tee "$setup_log" | show_progress || return
	extra_writable=()
	mv "$new/installed" "$qt_for_windows" || return
	rm -rf "$new"
}

# Sets `qt_for_windows` to a folder with Qt for the selected root.
ensure_qt()
{
	local lock
	qt_for_windows=$cache/qt-mingw-$({ cat "${qt_recipe[@]}" && printf '%s' "${root##*/}"; } | sha256sum | head -c 12)
	exec {lock}>"$cache/.qt-mingw.lock"
	if ! flock --nonblock "$lock"; then
		say "Waiting for another ./run, which is building Qt for Windows…"
		flock "$lock"
	fi
	if [[ ! -d $qt_for_windows ]]; then
		say "Building Qt for Windows (about 10 minutes on 2 cores, 100 MB in $cache, once)…"
		build_qt || fail "building Qt failed; see the end of $setup_log, then run ./run again."
	fi
	exec {lock}>&-
	touch "$qt_for_windows"
	find "$cache" -mindepth 1 -maxdepth 1 -name 'qt-mingw-*' -mtime +30 -exec rm -rf {} +
}
