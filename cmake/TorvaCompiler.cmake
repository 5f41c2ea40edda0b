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
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TORVA_CCACHE})
endif()

add_library(torva_warnings INTERFACE)
target_compile_options(torva_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wpointer-arith -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
  -Wundef -Wredundant-decls -Wno-missing-field-initializers -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps in std::string operations where there are none.
  target_compile_options(torva_warnings INTERFACE -Wno-restrict)
endif()
# x87-free, reproducible arithmetic: no contraction into fused operations.
target_compile_options(torva_warnings INTERFACE -ffp-contract=off)

if(TORVA_SANITIZE)
  # The fuzzer's coverage counters are compiled in, so that tests and fuzz targets share one build.
  set(torva_san -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(TORVA_FUZZ)
    list(APPEND torva_san -fsanitize=fuzzer-no-link)
  endif()
  add_compile_options(${torva_san} -O1 -g1)
  add_link_options(${torva_san})
endif()
