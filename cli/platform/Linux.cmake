# The program on Linux.
find_package(CLI11 REQUIRED)

set(platform_main MainLinux.cpp)
set(platform_sources
  terminal/StandardOutputLinux.cpp
  terminal/TerminalLinux.cpp)

function(install_program)
  install(TARGETS zelvatone_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES man/zelvatone.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES completion/zelvatone.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zelvatone)
endfunction()
