#!/usr/bin/env bash
# qt-recipe.sh SCRATCH TARGET: builds Qt for MinGW from the source package in the root's /usr/src and installs it in
# TARGET. SCRATCH holds mingw-w64.cmake. Runs in the Windows root.
set -euo pipefail

scratch=$1
target=$2
cd "$scratch"

dpkg-source --no-check -x /usr/src/qt6-base_*.dsc source

# Qt turns unity builds off for all of Gui, because some files for Windows can't share a unit. Only these two can't.
alone='rhi/qrhid3d12.cpp text/windows/qwindowsfontengine.cpp'
grep -q 'set_target_properties(Gui PROPERTIES UNITY_BUILD OFF)' source/src/gui/CMakeLists.txt
sed -i "s|set_target_properties(Gui PROPERTIES UNITY_BUILD OFF)|set_source_files_properties($alone \
	PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)|" source/src/gui/CMakeLists.txt

# Turn off what Qt would look for on a Windows machine, and what neither the module nor the tests use. HarfBuzz, which
# shapes Arabic and the like, takes long to compile.
options=()
for feature in sql network dbus opengl printsupport concurrent xml icu glib vulkan pdf tabletevent harfbuzz \
	system_zlib system_pcre2 system_png system_jpeg system_freetype system_doubleconversion; do
	options+=("-DFEATURE_$feature=OFF")
done

# Only the tests use this Qt, and -O3, which Qt chooses, takes nearly twice as long to compile. The options on the line
# below the flags keep Qt from replacing them.
cmake -S source -B build -G Ninja \
	-DCMAKE_TOOLCHAIN_FILE="$PWD/mingw-w64.cmake" \
	-DCMAKE_INSTALL_PREFIX="$target" \
	-DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE=-O1 -DCMAKE_CXX_FLAGS_RELEASE=-O1 \
	-DQT_USE_DEFAULT_CMAKE_OPTIMIZATION_FLAGS=ON -DFEATURE_optimize_size=ON \
	-DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
	-DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF -DQT_GENERATE_SBOM=OFF \
	-DQT_UNITY_BUILD=ON -DINPUT_opengl=no -DFEATURE_testlib=ON "${options[@]}"
cmake --build build
cmake --install build
