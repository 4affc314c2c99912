# zelvatone.so: what it exports, and where it is installed.
set(export_map ${CMAKE_CURRENT_SOURCE_DIR}/zelvatone.map)
set_target_properties(zelvatone_module PROPERTIES SUFFIX .so
  # The map says which of the names that are visible leave the library.
  CXX_VISIBILITY_PRESET default
  LINK_DEPENDS ${export_map})
target_link_options(zelvatone_module PRIVATE
  # One function under two names.
  LINKER:--defsym=main=VSTPluginMain
  LINKER:--version-script=${export_map}
  # Not every library that the ones we use name to their own users.
  LINKER:--as-needed
  LINKER:--gc-sections)
if(NOT ZELVATONE_SANITIZE)
  target_link_options(zelvatone_module PRIVATE
    LINKER:-z,defs
    # A host may carry another C++ runtime; this library brings its own.
    -static-libstdc++ -static-libgcc)
  target_sources(zelvatone_module PRIVATE RuntimeMemory.cpp)
endif()
# Where hosts look, also where other libraries go to a folder of their architecture.
install(TARGETS zelvatone_module LIBRARY DESTINATION lib/vst COMPONENT vst)
