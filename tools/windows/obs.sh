# shellcheck shell=bash
# OBS's own Windows binaries, which the tests under Wine load the module into: fetched once per version and kept beside
# the roots.

obs_recipe=(tools/windows/obs-recipe.sh tools/windows/obs/package-lock.json)

# Called where errexit is off, so each step says itself whether to go on.
fetch_obs()
{
	local new=$cache/obs-windows.new
	rm -rf "$new"
	mkdir "$new" || return
	extra_writable=("$new")
	in_root tools/windows/obs-recipe.sh "$new" || return
	extra_writable=()
	mv "$new" "$obs_for_windows"
}

# After this, `obs_for_windows` is a folder with them. Uses the developers' root.
ensure_obs()
{
	local lock
	obs_for_windows=$cache/obs-windows-$({ cat "${obs_recipe[@]}" && printf '%s' "$root_id"; } | sha256sum | head -c 12)
	exec {lock}>"$cache/.obs-windows.lock"
	flock "$lock"
	if [[ ! -d $obs_for_windows ]]; then
		step "Fetching OBS for Windows (35 MB, once)" "Check the network; then call ./run again." fetch_obs
	fi
	exec {lock}>&-
	touch "$obs_for_windows"
	find "$cache" -mindepth 1 -maxdepth 1 -name 'obs-windows-*' -mtime +30 -exec rm -rf {} +
}
