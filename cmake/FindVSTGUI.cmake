# Finds the headers and the built library of VSTGUI 4, and makes the target `vstgui` of them. Nothing
# is downloaded and nothing is built.
#
# VSTGUI_ROOT holds vstgui/vstgui.h or include/vstgui/vstgui.h. The library lies below it, or below
# VSTGUI_BUILD_DIR if VSTGUI was built elsewhere, wherever its own build or an installation puts it;
# else set VSTGUI_LIBRARY. Classes of a debug build differ: VSTGUI_DEBUG tells which kind it is, and is
# guessed from the library's folder. Deprecated methods must be on, as they are by default: the knob
# is made by one.
set(VSTGUI_BUILD_DIR "" CACHE PATH "Folder where VSTGUI was built, if not below VSTGUI_ROOT")
find_path(VSTGUI_INCLUDE_DIR vstgui/vstgui.h HINTS ${VSTGUI_ROOT} PATH_SUFFIXES include)
set(library_folders lib libs Release/libs MinSizeRel/libs RelWithDebInfo/libs Debug/libs)
list(TRANSFORM library_folders PREPEND build/ OUTPUT_VARIABLE build_folders)
list(TRANSFORM library_folders PREPEND vstgui/build/ OUTPUT_VARIABLE inner_build_folders)
find_library(VSTGUI_LIBRARY NAMES vstgui HINTS ${VSTGUI_BUILD_DIR} ${VSTGUI_ROOT}
  PATH_SUFFIXES ${library_folders} ${build_folders} ${inner_build_folders})
set(is_debug OFF)
if(VSTGUI_LIBRARY MATCHES "/[Dd]ebug/")
  set(is_debug ON)
endif()
option(VSTGUI_DEBUG "The VSTGUI that was found is a debug build" ${is_debug})

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
    INTERFACE_COMPILE_DEFINITIONS "$<$<BOOL:${VSTGUI_DEBUG}>:DEBUG=1>")

  # A static library does not carry what it needs itself. What is not installed here it was not
  # built with. Its headers need none of it: for the linker only, since a compiler's option of one of
  # these (-pthread) would make precompiled headers of other targets unfit.
  if(UNIX)
    find_package(PkgConfig REQUIRED)
    foreach(module x11 xcb xcb-util xcb-cursor xcb-keysyms xcb-xkb xkbcommon xkbcommon-x11
        cairo pangocairo pangoft2 fontconfig freetype2 libpng expat)
      string(MAKE_C_IDENTIFIER VSTGUI_${module} prefix)
      pkg_check_modules(${prefix} QUIET IMPORTED_TARGET GLOBAL ${module})
      if(${prefix}_FOUND)
        target_link_libraries(vstgui INTERFACE $<LINK_ONLY:PkgConfig::${prefix}>)
      endif()
    endforeach()
    target_link_libraries(vstgui INTERFACE ${CMAKE_DL_LIBS})
  endif()
endif()
mark_as_advanced(VSTGUI_INCLUDE_DIR VSTGUI_LIBRARY)
