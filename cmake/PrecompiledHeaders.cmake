# Parses the large headers of libraries once per target instead of once per file. Builds for clang-tidy switch this off,
# which also detects missing includes.
option(ORVALEN_PRECOMPILE "Use precompiled headers" ON)

set(orvalen_standard_headers
  <algorithm> <chrono> <filesystem> <functional> <map> <memory> <optional> <string> <string_view> <unordered_map> <vector>
  <tl/expected.hpp>)
set(orvalen_test_headers ${orvalen_standard_headers} <gmock/gmock.h> <gtest/gtest.h>)

# precompile(TARGET HEADER...)
function(precompile target)
  if(ORVALEN_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# Tests compile in half the time without the optimiser, and the tested libraries are still optimised. Fortified calls
# need the optimiser.
function(compile_quickly target)
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(${target} PRIVATE -O0 -U_FORTIFY_SOURCE)
  endif()
endfunction()
