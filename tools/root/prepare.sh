# shellcheck shell=bash
# Decides where commands run (on the machine, or in a root entered by bwrap or proot) and prepares that.

# Older headers stop the build: see obs-plugin/module/module.cpp.
oldest_obs=31.1.1

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
	# The id for build folders: it depends on the versions of these packages.
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

# Makes the selected root if needed, and prepares to enter it.
use_root()
{
	if [[ ! -d $root ]]; then
		ensure_package_lists
		install_packages "under a minute" mmdebstrap bubblewrap uidmap mount
	fi
	if ! choose_entrance; then
		install_packages "under a minute" bubblewrap proot
		choose_entrance ||
			fail "this system forbids both namespaces (bubblewrap) and tracing (proot); allow one of them"
	fi
	if [[ ! -d $root ]]; then
		make_root
	fi
	touch "$root"
	root_id=$(<"$root/etc/kestrune-root")
}

require_apt()
{
	command -v apt-get >/dev/null || fail "apt-get is missing; this needs Debian 12 or newer"
}

# Prepares the selected root for in_root; sets `entrance` and `root_id`.
prepare_root()
{
	require_apt
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

# Switches to the root for Windows, and makes it if needed.
prepare_windows_root()
{
	select_root trixie tools/root/windows-packages.txt
	require_apt
	use_root
}
