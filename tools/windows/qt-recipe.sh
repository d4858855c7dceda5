#!/usr/bin/env bash
# qt-recipe.sh SCRATCH TARGET: builds Qt for MinGW from the source package in the root's /usr/src and installs it in
# TARGET. Only what the module and the tests need. Runs in the Windows root.
set -euo pipefail

scratch=$1
target=$2
cd "$scratch"

dpkg-source --no-check -x /usr/src/qt6-base_*.dsc source

# All that Qt would look for on a Windows machine, and all that the module has no use for.
options=()
for feature in sql network dbus opengl printsupport concurrent xml icu glib vulkan pdf tabletevent \
	system_zlib system_pcre2 system_png system_jpeg system_freetype system_harfbuzz system_doubleconversion; do
	options+=("-DFEATURE_$feature=OFF")
done

cmake -S source -B build -G Ninja \
	-DCMAKE_TOOLCHAIN_FILE="$PWD/mingw-w64.cmake" \
	-DCMAKE_INSTALL_PREFIX="$target" \
	-DCMAKE_BUILD_TYPE=Release \
	-DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
	-DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF -DQT_GENERATE_SBOM=OFF \
	-DQT_UNITY_BUILD=ON -DINPUT_opengl=no -DFEATURE_testlib=ON "${options[@]}"
cmake --build build
cmake --install build
