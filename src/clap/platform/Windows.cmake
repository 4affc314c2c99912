# zelvatone.clap on Windows: what it exports, and its resources: those of zelvatone.dll, and the
# pictures of twice the size, for hosts that tell a scale.
enable_language(RC)
set(larger_pictures "")
file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/2x/*.PNG)
foreach(file ${files})
  get_filename_component(name ${file} NAME)
  string(APPEND larger_pictures "DOUBLE-${name} PNG \"2x/${name}\"\n")
endforeach()
zelvatone_add_resources(zelvatone_clap_module zelvatone.clap "Zelvatone CLAP instrument")
target_sources(zelvatone_clap_module PRIVATE zelvatone.def)
set_target_properties(zelvatone_clap_module PROPERTIES
  LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/zelvatone.def)
target_link_options(zelvatone_clap_module PRIVATE LINKER:--gc-sections)
install(TARGETS zelvatone_clap_module LIBRARY DESTINATION . COMPONENT clap)
