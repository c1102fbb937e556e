# Protections of release builds against exploits. Sanitizer builds have their own checks.
option(ORVALEN_HARDENING "Full RELRO, PIE, stack protector, fortified library calls, library assertions" ON)

if(ORVALEN_HARDENING AND NOT ORVALEN_SANITIZE)
  include(CheckPIESupported)
  check_pie_supported()
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  # Fortified calls need the optimiser.
  if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  endif()
endif()
