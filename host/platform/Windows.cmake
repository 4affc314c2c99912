# The host on Windows: without the libraries that Debian has for Linux only. It writes WAV files.
include(${PROJECT_SOURCE_DIR}/cmake/HeaderOnlyLibraries.cmake)

set(platform_sources
  audio/LibraryEncoderMissing.cpp
  files/LeftoversWindows.cpp
  files/StagedFileWindows.cpp
  files/SystemFileWindows.cpp
  picture/TrueColourPictureWindows.cpp
  plugin/PluginSearchWindows.cpp
  plugin/SharedLibraryWindows.cpp
  threads/InterruptWindows.cpp
  window/PictureDisplayWindows.cpp
  window/Win32EditorWindow.cpp)
set(platform_libraries gdiplus gdi32 user32 ole32 shell32)
