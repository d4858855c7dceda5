# Link this target PRIVATE.
add_library(kestrune_options INTERFACE)

if(MSVC)
  target_compile_options(
    kestrune_options INTERFACE /W3 /utf-8 /permissive- /MP /Zc:__cplusplus /Zc:preprocessor /Zc:char8_t- /Brepro
  )
  # Incremental linking leaves thunks and unused code behind.
  target_link_options(kestrune_options INTERFACE /Brepro "$<$<NOT:$<CONFIG:Debug>>:/INCREMENTAL:NO;/OPT:REF;/OPT:ICF>")
  target_compile_definitions(kestrune_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
else()
  target_compile_options(
    kestrune_options
    INTERFACE
      -Wall
      -Wextra
      -Wpedantic
      -Wshadow
      -Wconversion
      -Wsign-conversion
      -Wformat=2
      -Wnon-virtual-dtor
      -Woverloaded-virtual
      -Wcast-align
      -Wundef
      -Wimplicit-fallthrough
  )
endif()

# `signals` and `slots` would clash with other libraries; string conversions are always explicit.
target_compile_definitions(
  kestrune_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH
)

# ccache cannot cache compilations with precompiled headers without it.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fpch-preprocess)
endif()

# CMake before 4.0 makes no relocatable unity files, so __FILE__, which tests use, would hold the checkout's path.
if(MINGW)
  add_compile_options(-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=)
endif()

if(KESTRUNE_SANITIZE)
  add_compile_options(-fsanitize=${KESTRUNE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${KESTRUNE_SANITIZE})
endif()

# All code is instrumented; only the fuzz targets link libFuzzer's main function.
if(KESTRUNE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
