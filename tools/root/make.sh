# shellcheck shell=bash
# Makes the build root: a folder with a new enough Debian, once per package list.

roots=$cache/roots

root_list()
{
	cat "${root_lists[@]}" | sed 's/#.*//' | xargs -n 1
}

root_packages()
{
	root_list | grep -v '^src:'
}

root_source_packages()
{
	root_list | sed -n 's/^src://p'
}

# select_root SUITE FILE...: selects the root with this Debian release and these package lists.
select_root()
{
	root_suite=$1
	shift
	root_lists=("${@/#/"$checkout/"}")
	root=$roots/$root_suite-$(root_list | sha256sum | head -c 12)
	# Roots of different releases may be made at the same time.
	new_root=$roots/.$root_suite.new
	scratch_path=$roots/.$root_suite.scratch
	root_cost="about 3 minutes, 2 GB"
	small_root=
}

# Selects the full root, which is made from the small one if that exists.
select_developer_root()
{
	select_root forky tools/root/packages.txt
	local small=$root
	select_root forky tools/root/packages.txt tools/root/developer-packages.txt
	small_root=$small
}

# Selects the full root with what counts covered lines.
select_coverage_root()
{
	select_developer_root
	local full=$root
	select_root forky tools/root/packages.txt tools/root/developer-packages.txt tools/root/coverage-packages.txt
	small_root=$full
}

# Selects the root for building and the demo: the full one if it exists, else the small one.
select_small_root()
{
	select_developer_root
	if [[ ! -d $root ]]; then
		select_root forky tools/root/packages.txt
		root_cost="about 2 minutes, 1.3 GB"
	fi
}

# The root needs this machine's proxy, but none of apt's other settings.
apt_proxy_options()
{
	apt-config dump --format '%f "%v";%n' Acquire | grep -iE '^Acquire::https?::proxy' | sed 's/^/--aptopt=/'
}

# mmdebstrap's unshare mode runs as another user, who cannot enter home folders, so its scratch folder is elsewhere. Its
# path is stored for a later call to clean up.
open_scratch()
{
	mktemp -d "${TMPDIR:-/var/tmp}/kestrune-root.XXXXXX" >"$scratch_path"
	chmod 1777 "$(<"$scratch_path")"
}

remove_unfinished()
{
	rm -rf --one-file-system "$new_root"
	if [[ ! -s $scratch_path ]]; then
		return
	fi
	local removal=(rm -rf --one-file-system "$(<"$scratch_path")")
	"${removal[@]}" 2>/dev/null || mmdebstrap --unshare-helper "${removal[@]}" 2>/dev/null || as_admin "${removal[@]}"
	rm -f "$scratch_path"
}

# Unpacks an archive, so that the caller owns the whole root however it is made.
fill_root()
{
	local mirror=$1 apt_options=() source_options=() sources=() mode=auto runner=(env)
	mapfile -t apt_options < <(apt_proxy_options)
	mapfile -t sources < <(root_source_packages)
	local archives=("deb $mirror $root_suite main")
	if ((${#sources[@]} > 0)); then
		archives+=("deb-src $mirror $root_suite main")
		local download="cd /usr/src && apt-get source --download-only ${sources[*]}"
		source_options=(--customize-hook="chroot \"\$1\" sh -c '$download'")
	fi
	if ((EUID != 0)) && ! mmdebstrap --unshare-helper true && can_be_admin; then
		runner=(as_admin env)
		mode=root
	fi
	open_scratch
	mkdir "$new_root"
	"${runner[@]}" TMPDIR="$(<"$scratch_path")" mmdebstrap --mode=$mode --format=tar --variant=apt \
		--aptopt='APT::Install-Recommends "false"' \
		--aptopt='Acquire::Check-Valid-Until "false"' \
		--aptopt='Acquire::Retries "3"' \
		"${apt_options[@]}" \
		--dpkgopt=force-unsafe-io \
		--dpkgopt='path-exclude=/usr/share/doc/*' \
		--dpkgopt='path-exclude=/usr/share/man/*' \
		--dpkgopt='path-exclude=/usr/share/locale/*' \
		--include="$(root_packages | paste -sd ,)" \
		"${source_options[@]}" \
		"$root_suite" - "${archives[@]}" |
		tar --extract --preserve-permissions --exclude='./dev/*' --directory="$new_root" &&
		touch "$new_root/etc/resolv.conf" "$new_root/etc/hosts" &&
		write_root_id "$new_root"
}

# A root takes 2 GB. Removes those unused for a month.
remove_old_roots()
{
	find "$roots" -mindepth 1 -maxdepth 1 -name "$root_suite-*" -mtime +30 ! -path "$root" -exec rm -rf {} +
}

installed_in()
{
	dpkg-query --admindir="$1/var/lib/dpkg" --show | sort
}

# Adds packages to a copy of the small root, hard-linking its files. It keeps the small root's id, and so the builds
# made there, unless a package had to be upgraded.
extend_root()
{
	local packages=()
	mapfile -t packages < <(root_packages)
	rm -rf --one-file-system "$new_root"
	cp --archive --link "$small_root" "$new_root" &&
		as_admin_of "$new_root" sh -ec '
			apt-get -o APT::Sandbox::User=root update
			apt-get -o APT::Sandbox::User=root install -y --no-install-recommends "$@"
			apt-get clean
			rm -rf /var/lib/apt/lists/*' sh "${packages[@]}" || return
	if [[ -n $(comm -23 <(installed_in "$small_root") <(installed_in "$new_root")) ]]; then
		rm "$new_root/etc/kestrune-root"
		write_root_id "$new_root"
	fi
}

write_root_id()
{
	printf '%s made %s\n' "${root##*/}" "$(date --utc +%FT%TZ)" >"$1/etc/kestrune-root"
}

make_root()
{
	local lock mirror
	mkdir -p "$roots"
	exec {lock}>"$roots/.$root_suite.lock"
	if ! flock --nonblock "$lock"; then
		say "Waiting for another ./run, which is making the build root…"
		flock "$lock"
	fi
	if [[ ! -d $root && -d $small_root ]]; then
		step "Adding the development packages to the build root (about a minute)" \
			"Check the network and free disk space, then run ./run again." extend_root
		mv "$new_root" "$root"
	elif [[ ! -d $root ]]; then
		mirror=$(debian_mirror)
		[[ -n $mirror ]] || fail "apt has no Debian mirror here; name one: KESTRUNE_MIRROR=http://… ./run …"
		remove_unfinished
		trap remove_unfinished EXIT
		step "Making the build root ($root_cost, in $roots)" \
			"Check the network (the mirror is $mirror) and free disk space, then run ./run again." \
			fill_root "$mirror"
		mv "$new_root" "$root"
		remove_unfinished
		trap - EXIT
		remove_old_roots
	fi
	exec {lock}>&-
}
