# The reference host as a program: its command line, the prompt in a
# terminal, and the command tables of the scripting guide.
add_test(NAME host_options COMMAND ${CMAKE_CURRENT_LIST_DIR}/options_test.sh $<TARGET_FILE:fleetcmd-host>)
add_test(NAME host_prompt COMMAND ${CMAKE_CURRENT_LIST_DIR}/prompt_tmux.sh $<TARGET_FILE:fleetcmd-host>)
add_test(NAME host_docs_commands
         COMMAND ${CMAKE_COMMAND} -DHOST=$<TARGET_FILE:fleetcmd-host> -DGUIDE=${PROJECT_SOURCE_DIR}/docs/scripting.md
                 -P ${CMAKE_CURRENT_LIST_DIR}/docs_commands.cmake)
