# Finds the headers and the built library of an installed VSTGUI 4 under VSTGUI_ROOT, and makes the
# target `vstgui` of them. Nothing is downloaded and nothing is built.
#
# The folder holds vstgui/vstgui.h or include/vstgui/vstgui.h, and the library vstgui anywhere that
# VSTGUI's own build or an installation puts it; else set VSTGUI_INCLUDE_DIR and VSTGUI_LIBRARY.
# VSTGUI_DEFINITIONS names the macros that the library was built with and that change its classes
# (DEBUG=1 for a debug build, VSTGUI_ENABLE_DEPRECATED_METHODS=0): the editor needs the same ones.
find_path(VSTGUI_INCLUDE_DIR vstgui/vstgui.h PATH_SUFFIXES include)
find_library(VSTGUI_LIBRARY NAMES vstgui
  PATH_SUFFIXES lib libs Release/libs Debug/libs build/lib build/libs build/Release/libs)
set(VSTGUI_DEFINITIONS "" CACHE STRING "Macros that the installed VSTGUI was built with")

if(VSTGUI_INCLUDE_DIR AND EXISTS ${VSTGUI_INCLUDE_DIR}/vstgui/lib/vstguibase.h)
  file(STRINGS ${VSTGUI_INCLUDE_DIR}/vstgui/lib/vstguibase.h version_lines
    REGEX "#define VSTGUI_VERSION_(MAJOR|MINOR|PATCHLEVEL)")
  string(REGEX MATCHALL "[0-9]+" version_numbers "${version_lines}")
  list(JOIN version_numbers . VSTGUI_VERSION)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(VSTGUI
  REQUIRED_VARS VSTGUI_LIBRARY VSTGUI_INCLUDE_DIR VERSION_VAR VSTGUI_VERSION)

if(VSTGUI_FOUND AND NOT TARGET vstgui)
  add_library(vstgui UNKNOWN IMPORTED GLOBAL)
  set_target_properties(vstgui PROPERTIES
    IMPORTED_LOCATION ${VSTGUI_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${VSTGUI_INCLUDE_DIR}
    INTERFACE_COMPILE_DEFINITIONS "${VSTGUI_DEFINITIONS}")

  # A static library does not carry what it needs itself. What is not installed here it was not
  # built with.
  if(UNIX)
    find_package(PkgConfig REQUIRED)
    foreach(module x11 xcb xcb-util xcb-cursor xcb-keysyms xcb-xkb xkbcommon xkbcommon-x11
        cairo pangocairo pangoft2 fontconfig freetype2 libpng expat)
      string(MAKE_C_IDENTIFIER VSTGUI_${module} prefix)
      pkg_check_modules(${prefix} QUIET IMPORTED_TARGET GLOBAL ${module})
      if(${prefix}_FOUND)
        target_link_libraries(vstgui INTERFACE PkgConfig::${prefix})
      endif()
    endforeach()
    target_link_libraries(vstgui INTERFACE ${CMAKE_DL_LIBS})
  endif()
endif()
mark_as_advanced(VSTGUI_INCLUDE_DIR VSTGUI_LIBRARY)
