# The toolkit on Windows: one file for the window and its events, one for drawing, and the factory
# that makes both.
set(platform_sources
  lib/platform/win32/gdiplusdrawing.cpp
  lib/platform/win32/win32factory.cpp
  lib/platform/win32/win32frame.cpp)
set(platform_libraries gdiplus gdi32 user32 ole32)
