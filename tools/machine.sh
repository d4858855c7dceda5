# shellcheck shell=bash
# The person's own machine: its packages, its administrator, its Debian mirror.

# sudo and env -i drop these, and nothing can be downloaded behind a company proxy without them.
proxy_names=(http_proxy https_proxy ftp_proxy all_proxy no_proxy HTTP_PROXY HTTPS_PROXY FTP_PROXY ALL_PROXY NO_PROXY)

# environment_of NAME...: prints NAME=VALUE for those that are set, each ended by a NUL.
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

# apt_indexes FIELD [FILTER...]: prints this field of the package lists that apt has here.
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

package_lists_are_fresh=no

# A source that cannot be reached is no reason to stop: what matters is whether the packages install.
refresh_package_lists()
{
	if [[ $package_lists_are_fresh == no ]]; then
		as_admin apt-get -o DPkg::Lock::Timeout=300 update || true
		package_lists_are_fresh=yes
	fi
}

ensure_package_lists()
{
	if ! have_package_lists && can_be_admin; then
		step "Reading Debian's package lists (a few seconds)" "Then call ./run again." refresh_package_lists
	fi
}

install_now()
{
	refresh_package_lists
	as_admin apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends "$@"
}

# install_packages TIME PACKAGE...: installs those that the machine lacks; TIME is for the person waiting.
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
	can_be_admin || fail "this machine lacks ${missing[*]}, and there is no sudo; as root, run: $by_hand"
	step "Installing ${missing[*]} ($duration)" "As root, run: $by_hand; then call ./run again." \
		install_now "${missing[@]}"
}

# Prints the Debian archive that the machine itself installs from, or nothing.
debian_mirror()
{
	if [[ -n ${KESTRUNE_MIRROR:-} ]]; then
		printf '%s\n' "$KESTRUNE_MIRROR"
		return
	fi
	local mirror
	# A machine's sources may be a list of mirrors in a file, as on Debian's cloud images.
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
