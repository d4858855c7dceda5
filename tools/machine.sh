# shellcheck shell=bash
# The user's own machine: packages, root rights, Debian mirror.

# sudo and env -i drop these, but downloads behind a proxy need them.
proxy_names=(http_proxy https_proxy ftp_proxy all_proxy no_proxy HTTP_PROXY HTTPS_PROXY FTP_PROXY ALL_PROXY NO_PROXY)

# environment_of NAME...: prints NAME=VALUE for each variable that is set, NUL-terminated.
environment_of()
{
	local name
	for name; do
		if [[ -v $name ]]; then
			printf '%s=%s\0' "$name" "${!name}"
		fi
	done
}

as_admin()
{
	local proxies=()
	mapfile -d '' -t proxies < <(environment_of "${proxy_names[@]}")
	local command=(env "${proxies[@]}" DEBIAN_FRONTEND=noninteractive "$@")
	if ((EUID == 0)); then
		"${command[@]}"
	else
		sudo "${command[@]}"
	fi
}

can_be_admin()
{
	((EUID == 0)) || command -v sudo >/dev/null
}

is_installed()
{
	[[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# apt_indexes FIELD [FILTER...]: prints this field of apt's package lists.
apt_indexes()
{
	local field=$1
	shift
	apt-get indextargets --format "\$($field)" 'Created-By: Packages' "$@"
}

have_package_lists()
{
	[[ -n $(apt_indexes FILENAME) ]]
}

# Runs a command while no other ./run changes what is installed.
alone_with_apt()
{
	local lock
	exec {lock}>"$cache/.apt.lock"
	if ! flock --nonblock "$lock"; then
		say "Waiting for another ./run, which is installing packages…"
		flock "$lock"
	fi
	"$@"
	exec {lock}>&-
}

package_lists_are_fresh=no

# An unreachable source does not matter as long as the packages install.
refresh_package_lists()
{
	if [[ $package_lists_are_fresh == no ]]; then
		as_admin apt-get -o DPkg::Lock::Timeout=300 update || true
		package_lists_are_fresh=yes
	fi
}

read_missing_package_lists()
{
	if ! have_package_lists && can_be_admin; then
		step "Reading Debian's package lists (a few seconds)" "Then run ./run again." refresh_package_lists
	fi
}

ensure_package_lists()
{
	# Another ./run may be reading them: what it has so far looks like all of them.
	alone_with_apt read_missing_package_lists
}

install_now()
{
	refresh_package_lists
	as_admin apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "$@"
}

# install_packages TIME PACKAGE...: installs what is missing; TIME is shown to the user.
install_packages()
{
	local duration=$1 missing=() package
	shift
	for package; do
		is_installed "$package" || missing+=("$package")
	done
	if ((${#missing[@]} == 0)); then
		return
	fi
	local by_hand="apt-get update && apt-get install --no-install-recommends ${missing[*]}"
	can_be_admin || fail "${missing[*]} not installed, and there is no sudo; as root, run: $by_hand"
	alone_with_apt step "Installing ${missing[*]} ($duration)" "As root, run: $by_hand; then call ./run again." \
		install_now "${missing[@]}"
}

# Prints the Debian mirror of this machine, if any.
debian_mirror()
{
	if [[ -n ${KESTRUNE_MIRROR:-} ]]; then
		printf '%s\n' "$KESTRUNE_MIRROR"
		return
	fi
	local mirror
	# On Debian's cloud images the source is a file with mirrors.
	while read -r mirror; do
		if [[ $mirror == mirror+file:* ]]; then
			mirror=$(grep -m 1 -oE '^https?://[^[:space:]]+' "${mirror#mirror+file:}") || continue
		fi
		if [[ $mirror == http://* || $mirror == https://* ]]; then
			printf '%s\n' "$mirror"
			return
		fi
	done < <(apt_indexes REPO_URI 'Label: Debian')
}
