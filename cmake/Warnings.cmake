# Warnings for our own targets; a warning is an error in CI.
option(ORVALEN_WERROR "Treat warnings as errors" OFF)

add_library(orvalen_warnings INTERFACE)
target_compile_options(orvalen_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Woverloaded-virtual -Wnon-virtual-dtor -Wnull-dereference -Wformat=2
  $<$<BOOL:${ORVALEN_WERROR}>:-Werror>)

# g++ 12 sees overlapping copies in its own std::string where there are none.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(orvalen_warnings INTERFACE -Wno-restrict)
endif()
