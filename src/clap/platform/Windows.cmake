# zelvatone.clap on Windows: what it exports.
target_sources(zelvatone_clap_module PRIVATE zelvatone.def)
set_target_properties(zelvatone_clap_module PROPERTIES
  LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/zelvatone.def)
target_link_options(zelvatone_clap_module PRIVATE LINKER:--gc-sections)
install(TARGETS zelvatone_clap_module LIBRARY DESTINATION .)
