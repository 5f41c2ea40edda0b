# Precompiled headers of the standard library (and of GoogleTest for tests): parsing them is most of the time that a
# source takes. They hide a missing #include, so the release build goes without, and check_headers.sh compiles each
# header alone.
option(TORVA_PCH "Precompile the headers of the standard library and GoogleTest" OFF)

set(torva_pch_standard
  <algorithm> <array> <charconv> <cmath> <cstdint> <cstdio> <cstdlib> <cstring> <filesystem> <fstream> <functional>
  <limits> <map> <memory> <optional> <set> <span> <sstream> <string> <string_view> <unordered_map> <utility> <vector>)

# torva_precompile(TARGET [HEADER...]): the standard library's headers and those named for this target.
function(torva_precompile target)
  if(NOT TORVA_PCH)
    return()
  endif()
  target_precompile_headers(${target} PRIVATE ${torva_pch_standard} ${ARGN})
  # What is in it are system headers only, so that its checksum for the compiler cache can be that of their names:
  # folders with different paths then share what they compile.
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.pch.sum"
         "${CMAKE_CXX_COMPILER_VERSION} ${CMAKE_BUILD_TYPE} ${torva_pch_standard} ${ARGN}")
  endif()
endfunction()
