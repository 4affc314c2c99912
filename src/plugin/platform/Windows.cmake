# zelvatone.dll: what it exports, and its resources, which are the editor's pictures and the version
# that Windows shows.
enable_language(RC)

# zelvatone_add_resources(target file description): the editor's pictures, and the version of `file`.
function(zelvatone_add_resources target resource_file resource_description)
  set(resource_script ${CMAKE_CURRENT_BINARY_DIR}/${resource_file}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/src/plugin/zelvatone.rc.in ${resource_script} @ONLY)
  set_source_files_properties(${resource_script} PROPERTIES
    COMPILE_OPTIONS "-I${PROJECT_SOURCE_DIR}/resources"
    OBJECT_DEPENDS "${pictures}")
  target_sources(${target} PRIVATE ${resource_script})
endfunction()

zelvatone_add_resources(zelvatone_module zelvatone.dll "Zelvatone VST 2.4 instrument")
target_sources(zelvatone_module PRIVATE zelvatone.def)
set_target_properties(zelvatone_module PROPERTIES SUFFIX .dll
  LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/zelvatone.def)
target_link_options(zelvatone_module PRIVATE LINKER:--gc-sections)
install(TARGETS zelvatone_module LIBRARY DESTINATION . COMPONENT vst)
