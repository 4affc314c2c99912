# The program on Windows.
enable_language(RC)

set(resource_script ${CMAKE_CURRENT_BINARY_DIR}/zelvatone-exe.rc)
configure_file(platform/zelvatone.rc.in ${resource_script} @ONLY)
set_source_files_properties(${resource_script} PROPERTIES
  COMPILE_OPTIONS "-I${CMAKE_CURRENT_SOURCE_DIR}/platform"
  OBJECT_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/platform/zelvatone.manifest)
set(platform_main MainWindows.cpp ${resource_script})
set(platform_sources
  terminal/StandardOutputWindows.cpp
  terminal/TerminalWindows.cpp)

function(install_program)
  install(TARGETS zelvatone_program RUNTIME DESTINATION . COMPONENT program)
endfunction()
