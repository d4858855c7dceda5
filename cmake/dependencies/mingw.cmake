# What a cross-build for the tests links with: OBS's own DLLs, in the folder KESTRUNE_WINDOWS_OBS. For each, an import
# library is made of the names that it exports.

# kestrune_import(NAME LIBRARY): the imported target OBS::NAME for LIBRARY.dll.
function(kestrune_import name library)
  set(folder "${CMAKE_BINARY_DIR}/obs")
  set(dll "${KESTRUNE_WINDOWS_OBS}/bin/${library}.dll")
  file(MAKE_DIRECTORY "${folder}")
  execute_process(COMMAND "${CMAKE_OBJDUMP}" -p "${dll}" OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*\n\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" names "${listing}")
  string(REGEX REPLACE "\n\n.*" "\n" names "${names}")
  string(REGEX MATCHALL " [A-Za-z0-9_]+\n" names "${names}")
  list(JOIN names "" names)
  file(WRITE "${folder}/${library}.def" "LIBRARY ${library}.dll\nEXPORTS\n${names}")
  execute_process(
    COMMAND "${CMAKE_DLLTOOL}" -d "${folder}/${library}.def" -l "${folder}/lib${library}.a" COMMAND_ERROR_IS_FATAL ANY
  )
  add_library(OBS::${name} SHARED IMPORTED)
  set_target_properties(
    OBS::${name}
    PROPERTIES
      IMPORTED_LOCATION "${dll}"
      IMPORTED_IMPLIB "${folder}/lib${library}.a"
      INTERFACE_INCLUDE_DIRECTORIES "${KESTRUNE_WINDOWS_OBS}/include"
  )
endfunction()

kestrune_import(libobs obs)
kestrune_import(obs-frontend-api obs-frontend-api)
