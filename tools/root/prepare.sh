# shellcheck shell=bash
# Decides where commands run (the machine itself, or a root entered by bwrap or proot) and makes it ready.

# OBS loads a module only if the API version that the module reports is not newer than OBS's own.
oldest_obs=31.1

new_enough()
{
	[[ -n $1 ]] && dpkg --compare-versions "$1" ge "$oldest_obs"
}

installed_obs()
{
	dpkg-query --show --showformat='${Version}' libobs-dev 2>/dev/null
}

installable_obs()
{
	apt-cache policy libobs-dev | awk '$1 == "Candidate:" && $2 != "(none)" { print $2 }'
}

use_machine()
{
	local packages=()
	mapfile -t packages < <(root_packages)
	install_packages "about 2 minutes" "${packages[@]}"
	entrance=directly
	# Build folders remember what they were made in; a machine is known by what it compiles with.
	root_id="machine $(dpkg-query --show "${packages[@]}" | sha256sum | head -c 12)"
}

choose_entrance()
{
	if bwrap_works; then
		entrance=with_bwrap
	elif proot_works; then
		entrance=with_proot
	else
		return 1
	fi
}

# Makes the selected root unless it is there, and readies it to be entered.
use_root()
{
	if [[ ! -d $root ]]; then
		install_packages "under a minute" mmdebstrap bubblewrap uidmap mount
	fi
	if ! choose_entrance; then
		install_packages "under a minute" bubblewrap proot
		choose_entrance ||
			fail "neither namespaces (bubblewrap) nor tracing (proot) are allowed here; allow one of them"
	fi
	if [[ ! -d $root ]]; then
		make_root
	fi
	touch "$root"
	root_id=$(<"$root/etc/kestrune-root")
}

# Makes the selected root ready; after this, in_root works. Sets `entrance` and `root_id`.
prepare_root()
{
	command -v apt-get >/dev/null || fail "needs a Debian system (12 or newer): there is no apt-get here"
	mkdir -p "$roots"
	if new_enough "$(installed_obs)"; then
		use_machine
		return
	fi
	if [[ ! -d $root ]]; then
		: >"$setup_log"
		ensure_package_lists
		if new_enough "$(installable_obs)"; then
			use_machine
			return
		fi
	fi
	use_root
}

# Changes to the root for the Windows tests; `libobs_headers` are those of the root or machine that was in use.
prepare_windows_root()
{
	libobs_headers=/usr/include/obs
	if [[ $entrance != directly ]]; then
		libobs_headers=$root$libobs_headers
	fi
	select_root trixie tools/root/windows-packages.txt
	use_root
}
