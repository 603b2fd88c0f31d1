# The reference host as a program: its command line, the prompt in a
# terminal, and the command tables of the scripting guide.
add_test(NAME host_options COMMAND ${CMAKE_CURRENT_LIST_DIR}/options_test.sh $<TARGET_FILE:fleetcmd-host>)
add_test(NAME host_prompt COMMAND ${CMAKE_CURRENT_LIST_DIR}/prompt_tmux.sh $<TARGET_FILE:fleetcmd-host>)
add_test(NAME host_docs_commands
         COMMAND ${CMAKE_COMMAND} -DHOST=$<TARGET_FILE:fleetcmd-host> -DGUIDE=${PROJECT_SOURCE_DIR}/docs/scripting.md
                 -P ${CMAKE_CURRENT_LIST_DIR}/docs_commands.cmake)
# The package unpacked into a temporary root, when scripts/package.sh has built one.
add_test(NAME host_package COMMAND ${CMAKE_CURRENT_LIST_DIR}/package_test.sh ${PROJECT_SOURCE_DIR}/build-deb)
set_tests_properties(host_package PROPERTIES SKIP_RETURN_CODE 77)
