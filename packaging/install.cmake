# Install rules: the program in bin; the plug-in in its plugindir and the
# internal shared libraries beside it, private under the package's own library
# folder (found through RUNPATHs relative to each binary); the language files
# under share; the public header and fleetcmd.pc for host developers; the man
# page made from --help.
set(FC_PRIVATE_LIBS fc_platform fc_text hostlog hostcore hostnet fc_jt808 hostref_run)
file(RELATIVE_PATH FC_REL_PRIVATE ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/fleetcmd)

set_target_properties(fleetcmd-host fleetcmd-gw fleetcmd-termsim PROPERTIES INSTALL_RPATH "$ORIGIN/${FC_REL_PRIVATE}")
set_target_properties(${FC_PRIVATE_LIBS} PROPERTIES INSTALL_RPATH "$ORIGIN")
set_target_properties(fleetcmd PROPERTIES INSTALL_RPATH "$ORIGIN/..")

install(TARGETS fleetcmd-host fleetcmd-gw fleetcmd-termsim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS ${FC_PRIVATE_LIBS} LIBRARY DESTINATION ${FC_INSTALL_PRIVATE_LIBDIR} NAMELINK_SKIP)
install(TARGETS fleetcmd LIBRARY DESTINATION ${FC_INSTALL_PLUGINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/data/lang/en.ini ${PROJECT_SOURCE_DIR}/data/lang/zh-CN.ini
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fleetcmd/lang)
install(FILES ${PROJECT_SOURCE_DIR}/include/fleetcmd/fleetcmd.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fleetcmd)

configure_file(${CMAKE_CURRENT_LIST_DIR}/fleetcmd.pc.in ${PROJECT_BINARY_DIR}/fleetcmd.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/fleetcmd.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

find_program(HELP2MAN help2man)
if(HELP2MAN)
  set(FC_MAN_PAGE ${PROJECT_BINARY_DIR}/fleetcmd-host.1)
  add_custom_command(OUTPUT ${FC_MAN_PAGE}
                     COMMAND ${HELP2MAN} --no-info --section=1 --source=fleetcmd
                             "--name=drive the fleetcmd plug-in with scripts or a prompt"
                             --output=${FC_MAN_PAGE} $<TARGET_FILE:fleetcmd-host>
                     DEPENDS fleetcmd-host ${PROJECT_SOURCE_DIR}/app/host/options.cpp
                     COMMENT "man page of fleetcmd-host from --help")
  # The gateway's two programs have their man pages from --help as well.
  set(FC_MAN_PAGES ${FC_MAN_PAGE})
  foreach(program gw termsim)
    if(program STREQUAL gw)
      set(name "serve vehicle terminals and the hosts that send them commands")
    else()
      set(name "simulated vehicle terminals for a fleetcmd gateway")
    endif()
    set(page ${PROJECT_BINARY_DIR}/fleetcmd-${program}.1)
    add_custom_command(OUTPUT ${page}
                       COMMAND ${HELP2MAN} --no-info --section=1 --source=fleetcmd "--name=${name}"
                               --output=${page} $<TARGET_FILE:fleetcmd-${program}>
                       DEPENDS fleetcmd-${program} ${PROJECT_SOURCE_DIR}/app/${program}/main.cpp
                       COMMENT "man page of fleetcmd-${program} from --help")
    list(APPEND FC_MAN_PAGES ${page})
  endforeach()
  add_custom_target(fleetcmd-man ALL DEPENDS ${FC_MAN_PAGES})
  install(FILES ${FC_MAN_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
