# The editor on Windows: its pictures are resources of the plug-in's file.
set(platform_sources
  EditorPlatformWindows.cpp
  WebPageWindows.cpp)
set(platform_libraries shell32 ole32)
