# zelvatone.dll: its name, what it exports, and its resources, which are the editor's pictures and
# the version that Windows shows.
enable_language(RC)
set(resource_script ${CMAKE_CURRENT_BINARY_DIR}/zelvatone-dll.rc)
configure_file(plugin/zelvatone.rc.in ${resource_script} @ONLY)
set_source_files_properties(${resource_script} PROPERTIES
  COMPILE_OPTIONS "-I${PROJECT_SOURCE_DIR}/resources"
  OBJECT_DEPENDS "${pictures}")
target_sources(zelvatone_module PRIVATE ${resource_script} plugin/zelvatone.def)
set_target_properties(zelvatone_module PROPERTIES OUTPUT_NAME zelvatone PREFIX "" SUFFIX .dll
  LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/plugin/zelvatone.def)
target_link_options(zelvatone_module PRIVATE LINKER:--gc-sections)
install(TARGETS zelvatone_module LIBRARY DESTINATION .)
