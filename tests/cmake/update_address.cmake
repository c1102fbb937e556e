# Tests which addresses the build accepts for the update manifest.
include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/UpdateAddress.cmake")

function(expect wanted)
  foreach(address ${ARGN})
    is_update_address("${address}" accepted)
    if(NOT accepted STREQUAL wanted)
      message(SEND_ERROR "${address}: accepted is ${accepted}, not ${wanted}")
    endif()
  endforeach()
endfunction()

expect(TRUE
  https://orvalen.example/latest.json https://www.orvalen.example:8443/latest.json https://[::1]/latest.json
  http://localhost:8080/latest.json http://127.0.0.1/latest.json http://127.1.2.3:1/latest.json http://[::1]:80/latest.json)
expect(FALSE
  http://orvalen.example/latest.json http://localhost.orvalen.example/latest.json http://127.0.0.1.orvalen.example/latest.json
  http://127.0.0.1@orvalen.example/latest.json http://10.0.0.1/latest.json
  https://orvalen.example/ https://orvalen.example/v2/latest.json https://orvalen.example/latest.json/
  https://orvalen.example/latest.json?x=1 "https://orvalen.example/latest.json#x" https://a:b@orvalen.example/latest.json
  https:///latest.json ftp://orvalen.example/latest.json orvalen.example/latest.json HTTPS//latest.json)
