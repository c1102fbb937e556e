# Values that a distributor sets. The README says how to get credentials.
set(ORVALEN_SITE_NAME "orvalen.example" CACHE STRING "The maker's site, as the footer names it")
set(ORVALEN_UPDATE_URL "https://orvalen.example/latest.json" CACHE STRING "The address of the update manifest")
set(ORVALEN_SPOTIFY_ACCOUNTS_URL "https://accounts.spotify.com" CACHE STRING "Base address of the token service")
set(ORVALEN_SPOTIFY_API_URL "https://api.spotify.com" CACHE STRING "Base address of the Web API")
set(ORVALEN_SPOTIFY_CLIENT_ID "00000000000000000000000000000000" CACHE STRING
  "Client identifier of the streaming service's application")
set(ORVALEN_SPOTIFY_CLIENT_SECRET "00000000000000000000000000000000" CACHE STRING "Its client secret")

foreach(credential ORVALEN_SPOTIFY_CLIENT_ID ORVALEN_SPOTIFY_CLIENT_SECRET)
  string(LENGTH "${${credential}}" length)
  if(NOT length EQUAL 32 OR NOT "${${credential}}" MATCHES "^[0-9a-f]+$")
    message(FATAL_ERROR "${credential} must be 32 lower-case hexadecimal digits")
  endif()
endforeach()

# These texts are copied into a C++ header without escaping.
foreach(text ORVALEN_SITE_NAME ORVALEN_UPDATE_URL ORVALEN_SPOTIFY_ACCOUNTS_URL ORVALEN_SPOTIFY_API_URL)
  if("${${text}}" MATCHES "[\"\\\n]")
    message(FATAL_ERROR "${text} must hold no quotation mark, backslash or line break")
  endif()
endforeach()
include(UpdateAddress)
is_update_address("${ORVALEN_UPDATE_URL}" is_valid)
if(NOT is_valid)
  message(FATAL_ERROR "ORVALEN_UPDATE_URL must be https://HOST/latest.json; plain http is for loopback addresses only")
endif()
# Removes slashes at the end, because the program appends paths that start with a slash.
foreach(address ORVALEN_SPOTIFY_ACCOUNTS_URL ORVALEN_SPOTIFY_API_URL)
  string(REGEX REPLACE "/+$" "" ${address} "${${address}}")
endforeach()

configure_file("${CMAKE_SOURCE_DIR}/src/app/state/BuildConfiguration.h.in"
  "${CMAKE_BINARY_DIR}/generated/app/state/BuildConfiguration.h" @ONLY)
