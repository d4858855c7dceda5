# shellcheck shell=bash
# Runs commands in the checkout with a clean environment, in the build root or, where none is needed, on the machine.

# Programs in the root get this home, never the user's.
root_home=$cache/home

# More folders to share with the root.
extra_writable=()
extra_readable=()

bwrap_works()
{
	command -v bwrap >/dev/null &&
		bwrap --ro-bind / / --dev /dev --proc /proc --tmpfs /tmp --unshare-pid true 2>/dev/null
}

# Where namespaces are forbidden, proot traces every process instead: slow, but it works.
proot_works()
{
	command -v proot >/dev/null && perl tools/root/older-kernel.pl proot -r / true 2>/dev/null
}

# Fills the array `environment` with all that commands in the root get from the caller's.
collect_environment()
{
	local passed=("${proxy_names[@]}" CI npm_config_registry npm_config_proxy npm_config_https_proxy
		npm_config_noproxy npm_config_strict_ssl npm_config_cafile SSL_CERT_FILE NODE_EXTRA_CA_CERTS)
	mapfile -t -O ${#passed[@]} passed < <(compgen -e KESTRUNE_)
	mapfile -d '' -t environment < <(environment_of "${passed[@]}")
	environment+=(
		HOME="$root_home" PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 TERM="${TERM:-dumb}"
		KESTRUNE_ROOT_ID="$root_id"
		# In containers the checkout may have another owner.
		GIT_CONFIG_COUNT=1 GIT_CONFIG_KEY_0=safe.directory GIT_CONFIG_VALUE_0="$checkout"
	)
	local machine_certificates=/etc/ssl/certs/ca-certificates.crt
	if [[ ! -v NODE_EXTRA_CA_CERTS && -f $machine_certificates ]]; then
		environment+=(NODE_EXTRA_CA_CERTS="$machine_certificates")
	fi
}

# Fills `writable` and `readable`, the files and folders that the root shows under the same path.
collect_shared_paths()
{
	writable=("$checkout" "$root_home" "${extra_writable[@]}")
	readable=("${extra_readable[@]}")
	local path candidates=(/etc/resolv.conf /etc/hosts /etc/passwd /etc/group
		"${SSL_CERT_FILE:-}" "${NODE_EXTRA_CA_CERTS:-}" "${npm_config_cafile:-}")
	# Worktrees keep git data outside the checkout.
	candidates+=("$(git -C "$checkout" rev-parse --path-format=absolute --git-common-dir 2>/dev/null)")
	if [[ -f /etc/ssl/certs/ca-certificates.crt ]]; then
		readable+=(/etc/ssl/certs)
	fi
	for path in "${candidates[@]}"; do
		if [[ -e $path && $path != "$checkout"/* && $path != /etc/ssl/certs/* ]]; then
			readable+=("$path")
		fi
	done
}

# Adds the user's screen, graphics card and sound to `environment` and `display_paths`.
collect_display()
{
	local path runtime=${XDG_RUNTIME_DIR:-/nowhere}
	local candidates=(/tmp/.X11-unix /dev/dri "${XAUTHORITY:-$HOME/.Xauthority}"
		"$runtime/${WAYLAND_DISPLAY:-nowhere}" "$runtime/pulse/native" "$runtime/pipewire-0")
	for path in "${candidates[@]}"; do
		if [[ -e $path ]]; then
			display_paths+=("$path")
		fi
	done
	local shown=()
	mapfile -d '' -t shown < <(environment_of DISPLAY WAYLAND_DISPLAY XDG_SESSION_TYPE XDG_RUNTIME_DIR)
	environment+=("${shown[@]}" XAUTHORITY="${XAUTHORITY:-$HOME/.Xauthority}")
}

# Mount points must exist beforehand, because the root is mounted read-only.
make_mount_points()
{
	local path
	for path; do
		if [[ -e $root$path ]]; then
			continue
		elif [[ -d $path ]]; then
			mkdir -p "$root$path"
		else
			mkdir -p "$root${path%/*}"
			touch "$root$path"
		fi
	done
}

enter_with_bwrap()
{
	local path binds=()
	for path in "${writable[@]}"; do binds+=(--bind "$path" "$path"); done
	for path in "${readable[@]}"; do binds+=(--ro-bind "$path" "$path"); done
	for path in "${display_paths[@]}"; do binds+=(--dev-bind "$path" "$path"); done
	make_mount_points "${writable[@]}" "${readable[@]}"
	# Unprivileged X servers cannot make their socket folder.
	env -i "${environment[@]}" bwrap --ro-bind "$root" / --dev /dev --proc /proc \
		--perms 1777 --tmpfs /tmp --perms 1777 --dir /tmp/.X11-unix --tmpfs /run \
		--perms 0700 --dir "${XDG_RUNTIME_DIR:-/run/user}" \
		"${binds[@]}" --chdir "$checkout" --unshare-pid --die-with-parent "$@"
}

enter_with_proot()
{
	local path binds=() temporary status=0
	temporary=$(mktemp -d)
	mkdir -m 1777 "$temporary/.X11-unix"
	for path in "${writable[@]}" "${readable[@]}" "${display_paths[@]}"; do binds+=(-b "$path"); done
	make_mount_points "${writable[@]}" "${readable[@]}"
	# proot's emulated heap crashes large programs; this makes the C library avoid it.
	env -i "${environment[@]}" GLIBC_TUNABLES=glibc.malloc.hugetlb=2 perl tools/root/older-kernel.pl \
		proot -r "$root" -b /dev -b /proc -b "$temporary:/tmp" "${binds[@]}" -w "$checkout" "$@" || status=$?
	rm -rf "$temporary"
	return $status
}

enter_directly()
{
	env -i "${environment[@]}" "$@"
}

# in_root [--display] COMMAND...: runs a command, with --display on the user's screen and sound.
in_root()
{
	local environment=() writable=() readable=() display_paths=()
	mkdir -p "$root_home"
	collect_environment
	collect_shared_paths
	if [[ $1 == --display ]]; then
		shift
		collect_display
	fi
	"enter_$entrance" "$@"
}

# as_admin_of FOLDER COMMAND...: runs a command as administrator of the root in FOLDER. That takes no rights, because
# the caller owns the whole root.
as_admin_of()
{
	local folder=$1 environment=() path binds=() identity=()
	shift
	mapfile -d '' -t environment < <(environment_of "${proxy_names[@]}")
	environment+=(HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive)
	if [[ $entrance == with_bwrap ]]; then
		if ((EUID != 0)); then
			identity=(--unshare-user --uid 0 --gid 0)
		fi
		for path in /etc/resolv.conf /etc/hosts; do binds+=(--ro-bind-try "$path" "$path"); done
		env -i "${environment[@]}" bwrap --bind "$folder" / --dev /dev --proc /proc --perms 1777 --tmpfs /tmp \
			"${binds[@]}" "${identity[@]}" --unshare-pid --die-with-parent "$@"
	else
		for path in /dev /proc /etc/resolv.conf /etc/hosts; do binds+=(-b "$path"); done
		env -i "${environment[@]}" GLIBC_TUNABLES=glibc.malloc.hugetlb=2 perl tools/root/older-kernel.pl \
			proot -0 -r "$folder" "${binds[@]}" "$@"
	fi
}
