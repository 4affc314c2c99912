# The program on Linux.
find_package(CLI11 REQUIRED)

set(platform_main MainLinux.cpp)
set(platform_sources
  terminal/StandardOutputLinux.cpp
  terminal/TerminalLinux.cpp)

function(install_program)
  install(TARGETS zelvatone_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
  # With the version at the foot of its pages.
  configure_file(man/zelvatone.1 ${CMAKE_CURRENT_BINARY_DIR}/man/zelvatone.1 @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/man/zelvatone.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
  install(FILES completion/zelvatone.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zelvatone
    COMPONENT program)
endfunction()
