# Language level, warnings and sanitizers, the same for every target.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_program(TORVA_CCACHE ccache)
if(TORVA_CCACHE)
  # Precompiled headers need these sloppinesses; paths inside the tree count from its root.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime CCACHE_PCH_EXTSUM=1
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${TORVA_CCACHE})
endif()

add_library(torva_warnings INTERFACE)
target_compile_options(torva_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wpointer-arith -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
  -Wundef -Wredundant-decls -Wno-missing-field-initializers -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps in std::string operations where there are none.
  target_compile_options(torva_warnings INTERFACE -Wno-restrict)
endif()
if(TORVA_PCH AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # Behind a precompiled header clang takes fields for unused that only other sources use.
  target_compile_options(torva_warnings INTERFACE -Wno-unused-private-field)
endif()
# x87-free, reproducible arithmetic: no contraction into fused operations.
target_compile_options(torva_warnings INTERFACE -ffp-contract=off)

find_program(TORVA_LLD ld.lld)
if(TORVA_LLD AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  add_link_options(-fuse-ld=lld)
endif()

if(TORVA_SANITIZE)
  # The fuzzer's coverage counters are compiled in, so that tests and fuzz targets share one build.
  set(torva_san -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(TORVA_FUZZ)
    list(APPEND torva_san -fsanitize=fuzzer-no-link)
  endif()
  add_compile_options(${torva_san} -O1 -g1)
  add_link_options(${torva_san})
endif()
