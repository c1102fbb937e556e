# Sets RESULT to whether ADDRESS is a valid address of the update manifest: https with the path "/latest.json". http is
# allowed for loopback addresses only, for tests: on a network, an attacker could change the answer and so choose what
# users download.
function(is_update_address address result)
  set(port "(:[0-9]+)?")
  set(loopback "(localhost|127\\.[0-9]+\\.[0-9]+\\.[0-9]+|\\[::1\\])")
  set(${result} FALSE PARENT_SCOPE)
  if("${address}" MATCHES "^https://[A-Za-z0-9.-]+${port}/latest\\.json$" OR
      "${address}" MATCHES "^https?://${loopback}${port}/latest\\.json$")
    set(${result} TRUE PARENT_SCOPE)
  endif()
endfunction()
