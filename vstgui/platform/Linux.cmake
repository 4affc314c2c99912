# The toolkit on X11: one file for the window and its events, one for drawing, and the factory that
# makes both.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VSTGUI_LINUX REQUIRED IMPORTED_TARGET GLOBAL xcb cairo pangocairo)

set(platform_sources
  lib/platform/linux/cairodrawing.cpp
  lib/platform/linux/linuxfactory.cpp
  lib/platform/linux/x11frame.cpp)
set(platform_libraries PkgConfig::VSTGUI_LINUX ${CMAKE_DL_LIBS})
