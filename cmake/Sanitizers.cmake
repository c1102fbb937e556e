# ORVALEN_SANITIZE: a comma-separated list for the compiler's -fsanitize, used for all targets.
set(ORVALEN_SANITIZE "" CACHE STRING "Sanitizers to build everything with, for example address,undefined")

if(ORVALEN_SANITIZE)
  add_compile_options(-fsanitize=${ORVALEN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ORVALEN_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options("-fsanitize-ignorelist=${CMAKE_SOURCE_DIR}/tests/third-party.ignore")
  endif()
endif()
