# `cpack` packs the install tree into the build folder's `packages`.
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_PACKAGE_NAME kestrune)
set(CPACK_PACKAGE_VENDOR "${kestrune_author}")
set(CPACK_PACKAGE_CONTACT "${kestrune_author} <${KESTRUNE_WEBSITE}>")
set(CPACK_PACKAGE_HOMEPAGE_URL "${KESTRUNE_WEBSITE}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "OBS Studio dock that makes vertical Shorts of the last moments")
set(CPACK_PACKAGE_DESCRIPTION
    "Press a hotkey, get a captioned vertical Short of the last 30-120 seconds. The dock saves OBS's Replay Buffer and
hands it to the Kestrune helper, a program of its own that this package does not hold."
)
set(CPACK_RESOURCE_FILE_LICENSE "${CMAKE_CURRENT_SOURCE_DIR}/LICENSE")
set(CPACK_STRIP_FILES ON)
# No top-level folder: users unpack the archive over their OBS folders.
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME kestrune-${PROJECT_VERSION}-windows-x64)
else()
  set(CPACK_GENERATOR DEB TGZ)
  set(CPACK_PACKAGE_FILE_NAME kestrune-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION video)
  # OBS refuses modules built for a newer OBS, the linker those built with a newer Qt. Where time_t became 64-bit, Qt's
  # package is named differently.
  set(qt_version "${Qt6_VERSION_MAJOR}.${Qt6_VERSION_MINOR}")
  string(
    CONCAT CPACK_DEBIAN_PACKAGE_DEPENDS
           "obs-studio (>= 31.1), "
           "libqt6widgets6 (>= ${qt_version}) | libqt6widgets6t64 (>= ${qt_version})"
  )
endif()

include(CPack)
