# Runs one script through the reference host and compares its lines (standard
# output and standard error together, in order) with the expected ones. The
# host must exit with 1 when the expected lines hold an ERROR, else with 0.
# With UPDATE set, writes the expected file instead.
#
# NET: the host's --net mode. In a gateway mode (gw, gw://...) the expected
# lines are those of <name>.gw.out beside EXPECTED when there is one: scripts
# whose commands have no terminal message read the documented error there.
set(net_args "")
if(NET)
  set(net_args "--net ${NET}")
  if(NET MATCHES "^gw")
    string(REGEX REPLACE "\\.out$" ".gw.out" gw_expected "${EXPECTED}")
    if(EXISTS ${gw_expected})
      set(EXPECTED ${gw_expected})
    endif()
  endif()
endif()
execute_process(COMMAND sh -c "exec \"$0\" --fixed-time ${net_args} --script \"$1\" 2>&1" ${HOST} ${SCRIPT}
                OUTPUT_VARIABLE actual RESULT_VARIABLE result)
if(UPDATE)
  file(WRITE ${EXPECTED} "${actual}")
  return()
endif()
file(READ ${EXPECTED} expected)
set(want 0)
if(expected MATCHES "(^|\n)ERROR ")
  set(want 1)
endif()
if(NOT actual STREQUAL expected)
  file(WRITE ${EXPECTED}.actual "${actual}")
  message(FATAL_ERROR "the lines differ from ${EXPECTED}; see ${EXPECTED}.actual")
endif()
if(NOT result EQUAL want)
  message(FATAL_ERROR "fleetcmd-host exited with ${result}, expected ${want}")
endif()
