# Warnings for our own targets. CI treats them as errors.
option(ORVALEN_WERROR "Treat warnings as errors" OFF)

add_library(orvalen_warnings INTERFACE)
target_compile_options(orvalen_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Woverloaded-virtual -Wnon-virtual-dtor -Wnull-dereference -Wformat=2
  $<$<BOOL:${ORVALEN_WERROR}>:-Werror>)

# g++ 12 wrongly reports overlapping copies in std::string.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(orvalen_warnings INTERFACE -Wno-restrict)
endif()
