# The host on Windows: without the libraries that Debian has for Linux only. It writes WAV files,
# and makes no tour.
include(${PROJECT_SOURCE_DIR}/cmake/HeaderOnlyLibraries.cmake)
enable_language(RC)

set(resource_script ${CMAKE_CURRENT_BINARY_DIR}/zelvatone-exe.rc)
configure_file(platform/zelvatone.rc.in ${resource_script} @ONLY)
set_source_files_properties(${resource_script} PROPERTIES
  COMPILE_OPTIONS "-I${CMAKE_CURRENT_SOURCE_DIR}/platform"
  OBJECT_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/platform/zelvatone.manifest)
set(platform_main MainWindows.cpp ${resource_script})
set(platform_sources
  audio/SoundEncoderWindows.cpp
  commands/TourCommandWindows.cpp
  files/SystemFileWindows.cpp
  picture/TrueColourPictureWindows.cpp
  plugin/PluginSearchWindows.cpp
  plugin/SharedLibraryWindows.cpp
  terminal/InterruptWindows.cpp
  terminal/StandardOutputWindows.cpp
  terminal/TerminalWindows.cpp
  window/PictureDisplayWindows.cpp
  window/Win32EditorWindow.cpp)
set(platform_libraries gdiplus gdi32 user32 ole32 shell32)
