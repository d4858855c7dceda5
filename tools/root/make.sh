# shellcheck shell=bash
# Makes the build root: a folder with a Debian that is new enough, made once per package list.

roots=$cache/roots

# Prints what the root's package list names, one per line.
root_list()
{
	sed 's/#.*//' "$root_list_file" | xargs -n 1
}

root_packages()
{
	root_list | grep -v '^src:'
}

root_source_packages()
{
	root_list | sed -n 's/^src://p'
}

# select_root SUITE FILE: chooses the root that everything here is about, by its Debian release and package list.
select_root()
{
	root_suite=$1
	root_list_file=$checkout/$2
	root=$roots/$root_suite-$(root_list | sha256sum | head -c 12)
}

select_root forky tools/root/packages.txt

# apt's own settings on this machine do not reach the root, but its proxy is needed there, too.
apt_proxy_options()
{
	apt-config dump --format '%f "%v";%n' Acquire | grep -iE '^Acquire::https?::proxy' | sed 's/^/--aptopt=/'
}

# mmdebstrap's scratch folder is elsewhere than the root: in its unshare mode it runs as another user,
# to whom a home folder is closed. Where it is, is written down for the call that finds it left behind.
open_scratch()
{
	mktemp -d "${TMPDIR:-/var/tmp}/kestrune-root.XXXXXX" >"$roots/.scratch"
	chmod 1777 "$(<"$roots/.scratch")"
}

remove_unfinished()
{
	rm -rf --one-file-system "$roots/.new"
	if [[ ! -s $roots/.scratch ]]; then
		return
	fi
	local removal=(rm -rf --one-file-system "$(<"$roots/.scratch")")
	"${removal[@]}" 2>/dev/null || mmdebstrap --unshare-helper "${removal[@]}" 2>/dev/null || as_admin "${removal[@]}"
	rm -f "$roots/.scratch"
}

# The root comes as an archive and is unpacked here, so that all of it belongs to the person who calls,
# whichever way of making it works on this machine.
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
	mkdir "$roots/.new"
	"${runner[@]}" TMPDIR="$(<"$roots/.scratch")" mmdebstrap --mode=$mode --format=tar --variant=apt \
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
		tar --extract --preserve-permissions --exclude='./dev/*' --directory="$roots/.new" &&
		touch "$roots/.new/etc/resolv.conf" "$roots/.new/etc/hosts" &&
		printf '%s made %s\n' "${root##*/}" "$(date --utc +%FT%TZ)" >"$roots/.new/etc/kestrune-root"
}

# A root takes 2 GB; one that no checkout has used for a month is only in the way.
remove_old_roots()
{
	find "$roots" -mindepth 1 -maxdepth 1 -name "$root_suite-*" -mtime +30 ! -path "$root" -exec rm -rf {} +
}

make_root()
{
	local lock mirror
	exec {lock}>"$roots/.lock"
	if ! flock --nonblock "$lock"; then
		say "Another call is making the build root; waiting for it…"
		flock "$lock"
	fi
	if [[ ! -d $root ]]; then
		mirror=$(debian_mirror)
		[[ -n $mirror ]] || fail "apt knows no Debian archive here; name one: KESTRUNE_MIRROR=http://… ./run …"
		remove_unfinished
		trap remove_unfinished EXIT
		step "Making the build root (about 2 minutes, 2 GB, in $roots)" \
			"Check the network (the archive is $mirror) and the free space; then call ./run again." \
			fill_root "$mirror"
		mv "$roots/.new" "$root"
		remove_unfinished
		trap - EXIT
		remove_old_roots
	fi
	exec {lock}>&-
}
