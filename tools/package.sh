#!/usr/bin/env bash
# package.sh: makes the users' packages in build/packages: a .deb and a .tar.gz for this Debian, with checksums. Runs in
# the build root.
set -euo pipefail

build_dir=build/ubuntu-ci-x86_64
packages=build/packages

tools/build.sh "${build_dir##*/}" --target kestrune
rm -rf "$packages" "$build_dir/packages"
flock "build/.${build_dir##*/}.lock" cpack --config "$build_dir/CPackConfig.cmake"
mkdir -p "$packages"
cp "$build_dir"/packages/*.deb "$build_dir"/packages/*.tar.gz "$packages"
cd "$packages"
sha256sum -- *.deb *.tar.gz >SHA256SUMS

# shellcheck source=/dev/null
release=$(source /etc/os-release && printf '%s' "$PRETTY_NAME")
obs=$(dpkg-query --show --showformat='${source:Upstream-Version}' libobs-dev)
qt=$(dpkg-query --show --showformat='${source:Upstream-Version}' qt6-base-dev)
cat <<TEXT

Packages for $release (OBS $obs, Qt $qt), in $packages:
$(cat SHA256SUMS)

They need this Qt or a newer one. The ZIP for Windows is built on Windows with Visual Studio: see
docs/building.md.
TEXT
