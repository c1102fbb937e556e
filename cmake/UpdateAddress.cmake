# Sets RESULT to whether ADDRESS may be the address of the update manifest: https and the path "/latest.json". Plain
# http is for a server of one's own, on a loopback address only: whoever can change the answer chooses what users download.
function(is_update_address address result)
  set(port "(:[0-9]+)?")
  set(loopback "(localhost|127\\.[0-9]+\\.[0-9]+\\.[0-9]+|\\[::1\\])")
  set(${result} FALSE PARENT_SCOPE)
  if("${address}" MATCHES "^https://[A-Za-z0-9.-]+${port}/latest\\.json$" OR
      "${address}" MATCHES "^https?://${loopback}${port}/latest\\.json$")
    set(${result} TRUE PARENT_SCOPE)
  endif()
endfunction()
