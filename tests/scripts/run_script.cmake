# Runs one script through the reference host and compares its lines with the
# expected ones. With UPDATE set, writes the expected file instead.
execute_process(COMMAND ${HOST} --fixed-time --script ${SCRIPT}
                OUTPUT_VARIABLE actual ERROR_VARIABLE errors RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "fleetcmd-host exited with ${result}: ${errors}")
endif()
if(UPDATE)
  file(WRITE ${EXPECTED} "${actual}")
  return()
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  file(WRITE ${EXPECTED}.actual "${actual}")
  message(FATAL_ERROR "the lines differ from ${EXPECTED}; see ${EXPECTED}.actual")
endif()
