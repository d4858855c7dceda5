# Fetches the dependencies of a Visual Studio build into .deps, as buildspec.json lists them, and builds libobs there.

include("${CMAKE_CURRENT_LIST_DIR}/fetch.cmake")

if(NOT CMAKE_GENERATOR MATCHES "Visual Studio")
  message(FATAL_ERROR "The Windows build needs a Visual Studio generator; use the preset windows-x64")
endif()

set(dependencies "${CMAKE_CURRENT_SOURCE_DIR}/.deps")

# Reads buildspec.json's entry into version, url_base and sha256.
macro(read_dependency key)
  string(JSON version GET "${buildspec}" dependencies ${key} version)
  string(JSON url_base GET "${buildspec}" dependencies ${key} baseUrl)
  string(JSON sha256 GET "${buildspec}" dependencies ${key} hashes windows-x64)
endmacro()

read_dependency(prebuilt)
set(prebuilt_sha256 ${sha256})
set(prebuilt "${dependencies}/obs-deps-${version}-x64")
kestrune_fetch("${url_base}/${version}/windows-deps-${version}-x64.zip" ${sha256} "${prebuilt}")

read_dependency(qt6)
set(qt_sha256 ${sha256})
set(qt "${dependencies}/obs-deps-qt6-${version}-x64")
kestrune_fetch("${url_base}/${version}/windows-deps-qt6-${version}-x64.zip" ${sha256} "${qt}")

read_dependency(obs-studio)
set(obs "${dependencies}/obs-studio-${version}")
kestrune_fetch("${url_base}/${version}.zip" ${sha256} "${obs}")

list(PREPEND CMAKE_PREFIX_PATH "${dependencies}" "${prebuilt}" "${qt}")
# No dependency has every configuration, and CMake might pick debug libraries for a missing one.
set(CMAKE_MAP_IMPORTED_CONFIG_RELWITHDEBINFO RelWithDebInfo Release MinSizeRel None "")
set(CMAKE_MAP_IMPORTED_CONFIG_RELEASE Release RelWithDebInfo MinSizeRel None "")
set(CMAKE_MAP_IMPORTED_CONFIG_MINSIZEREL MinSizeRel Release RelWithDebInfo None "")

# run_step(TEXT COMMAND...): runs one step of OBS's build and shows its output only on failure.
function(run_step text)
  message(STATUS "${text}")
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${text} failed:\n${output}")
  endif()
endfunction()

# Everything that the build depends on; OBS is rebuilt only when it changes.
set(obs_stamp "${dependencies}/.obs-studio-built")
set(obs_wanted "${sha256} ${CMAKE_GENERATOR} ${CMAKE_VS_WINDOWS_TARGET_PLATFORM_VERSION} ${prebuilt} ${qt}")
if(EXISTS "${obs_stamp}")
  file(READ "${obs_stamp}" obs_built)
endif()
if(NOT "${obs_built}" STREQUAL "${obs_wanted}")
  file(REMOVE "${obs_stamp}")
  # The hashes make OBS use the dependencies fetched above instead of fetching its own.
  # cmake-format: off
  run_step(
    "Configuring OBS ${version}"
    "${CMAKE_COMMAND}" -S "${obs}" -B "${obs}/build_x64" -G "${CMAKE_GENERATOR}"
    -A "x64,version=${CMAKE_VS_WINDOWS_TARGET_PLATFORM_VERSION}"
    -DOBS_CMAKE_VERSION:STRING=3.0.0 -DENABLE_PLUGINS:BOOL=OFF -DENABLE_FRONTEND:BOOL=OFF
    -DOBS_VERSION_OVERRIDE:STRING=${version}
    -DOBS_DEPENDENCY_prebuilt_x64_HASH:STRING=${prebuilt_sha256} -DOBS_DEPENDENCY_qt6_x64_HASH:STRING=${qt_sha256}
    "-DCMAKE_PREFIX_PATH=${prebuilt}\;${qt}"
  )
  foreach(configuration IN ITEMS Debug Release)
    run_step(
      "Building OBS ${version}, ${configuration}"
      "${CMAKE_COMMAND}" --build "${obs}/build_x64" --target obs-frontend-api --config ${configuration} --parallel
    )
    run_step(
      "Installing OBS ${version}, ${configuration}"
      "${CMAKE_COMMAND}" --install "${obs}/build_x64" --component Development --config ${configuration}
      --prefix "${dependencies}"
    )
  endforeach()
  # cmake-format: on
  file(WRITE "${obs_stamp}" "${obs_wanted}")
endif()
