# The host on Linux.
find_package(fmt REQUIRED GLOBAL)
find_package(nlohmann_json REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET GLOBAL sndfile)
pkg_check_modules(EBUR128 REQUIRED IMPORTED_TARGET libebur128)
pkg_check_modules(OGG REQUIRED IMPORTED_TARGET ogg)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-icccm)
find_package(PNG REQUIRED GLOBAL)

set(platform_sources
  audio/LibraryEncoder.cpp
  audio/LoudnessMeter.cpp
  audio/OggSerial.cpp
  audio/TruePeak.cpp
  files/LeftoversLinux.cpp
  files/OutputFolder.cpp
  files/StagedFileLinux.cpp
  files/SystemFileLinux.cpp
  picture/Picture.cpp
  picture/PngFile.cpp
  picture/TrueColourPicture.cpp
  plugin/PluginSearchLinux.cpp
  plugin/SharedLibraryLinux.cpp
  threads/InterruptLinux.cpp
  window/DisplayCookieLinux.cpp
  window/PictureDisplayLinux.cpp
  window/X11EditorWindow.cpp)
set(platform_libraries PkgConfig::SNDFILE PkgConfig::OGG PkgConfig::EBUR128 PNG::PNG PkgConfig::XCB ${CMAKE_DL_LIBS})
