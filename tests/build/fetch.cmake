# Run with cmake -P: fetching an archive, once and only if it is the right one. SCRATCH is a folder for the test alone,
# FETCH the file under test.

set(archive "${SCRATCH}/library-1.2.zip")
set(target "${SCRATCH}/deps/library-1.2")

# Makes the archive anew, with this text in the one file of its one folder, and sets `sha256`.
macro(make_archive text)
  file(WRITE "${SCRATCH}/source/library-${text}/file.txt" "${text}")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E tar cf "${archive}" --format=zip "library-${text}"
    WORKING_DIRECTORY "${SCRATCH}/source" COMMAND_ERROR_IS_FATAL ANY
  )
  file(SHA256 "${archive}" sha256)
endmacro()

# A failed fetch ends the CMake process that tries it.
macro(fetch url hash)
  file(WRITE "${SCRATCH}/fetch.cmake" "include(\"${FETCH}\")\nkestrune_fetch(\"${url}\" ${hash} \"${target}\")\n")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -P "${SCRATCH}/fetch.cmake"
    RESULT_VARIABLE failed
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output
  )
  # CMake breaks its lines where it likes.
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
endmacro()

macro(expect_text text)
  if(failed)
    message(FATAL_ERROR "fetching failed: ${output}")
  endif()
  file(READ "${target}/file.txt" found)
  if(NOT found STREQUAL "${text}")
    message(FATAL_ERROR "found '${found}', not '${text}'")
  endif()
endmacro()

macro(expect_error pattern)
  if(NOT failed OR NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "expected an error with '${pattern}', not: ${output}")
  endif()
  file(GLOB left LIST_DIRECTORIES true "${SCRATCH}/deps/*" "${SCRATCH}/deps/.*")
  if(left)
    message(FATAL_ERROR "left behind: ${left}")
  endif()
endmacro()

file(REMOVE_RECURSE "${SCRATCH}")
set(wrong 0000000000000000000000000000000000000000000000000000000000000000)

make_archive(first)
fetch("file://${archive}" ${wrong})
expect_error("is not the expected file")

fetch("file://${SCRATCH}/missing.zip" ${sha256})
expect_error("cannot be downloaded")

fetch("file://${archive}" ${sha256})
expect_text(first)

# Finished: not looked at again, even if it is no longer to be had.
file(REMOVE "${archive}")
fetch("file://${archive}" ${sha256})
expect_text(first)

# Another version in its place.
make_archive(second)
fetch("file://${archive}" ${sha256})
expect_text(second)

# A damaged download does not leave the old version behind as if it were the new one.
fetch("file://${archive}" ${wrong})
expect_error("is not the expected file")
