# zelvatone.clap: what it exports, and where it is installed. See src/plugin/platform/Linux.cmake.
set(clap_map ${CMAKE_CURRENT_SOURCE_DIR}/zelvatone.map)
set_target_properties(zelvatone_clap_module PROPERTIES
  CXX_VISIBILITY_PRESET default
  LINK_DEPENDS ${clap_map})
target_link_options(zelvatone_clap_module PRIVATE
  LINKER:--version-script=${clap_map}
  LINKER:--as-needed
  LINKER:--gc-sections)
if(NOT ZELVATONE_SANITIZE)
  target_link_options(zelvatone_clap_module PRIVATE
    LINKER:-z,defs
    -static-libstdc++ -static-libgcc)
  target_sources(zelvatone_clap_module PRIVATE ${PROJECT_SOURCE_DIR}/src/plugin/RuntimeMemory.cpp)
endif()
# Where hosts look.
install(TARGETS zelvatone_clap_module LIBRARY DESTINATION lib/clap COMPONENT clap)
