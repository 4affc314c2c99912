# The host on Linux.
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET GLOBAL sndfile)
pkg_check_modules(OGG REQUIRED IMPORTED_TARGET ogg)
pkg_check_modules(FFTW REQUIRED IMPORTED_TARGET fftw3f)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-icccm)
find_package(PNG REQUIRED GLOBAL)

# The tour's page lies in files of its own kind and is built into the program.
set(page_folder ${CMAKE_CURRENT_SOURCE_DIR}/tour/page)
set(page_files page.html stop.html style.css script.js)
foreach(file IN LISTS page_files)
  get_filename_component(name ${file} NAME_WE)
  string(TOUPPER ${name} name)
  file(READ ${page_folder}/${file} ${name})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page_folder}/${file})
endforeach()
configure_file(tour/PageParts.cpp.in ${CMAKE_CURRENT_BINARY_DIR}/PageParts.cpp @ONLY)

set(platform_main MainLinux.cpp)
set(platform_sources
  audio/LibraryEncoder.cpp
  audio/OggSerial.cpp
  commands/TourCommand.cpp
  files/OutputFolder.cpp
  files/SystemFileLinux.cpp
  picture/LevelColours.cpp
  picture/Picture.cpp
  picture/PngFile.cpp
  picture/Spectrogram.cpp
  picture/TrueColourPicture.cpp
  picture/Waveform.cpp
  plugin/PluginSearchLinux.cpp
  plugin/SharedLibraryLinux.cpp
  terminal/InterruptLinux.cpp
  terminal/StandardOutputLinux.cpp
  terminal/TerminalLinux.cpp
  tour/TourPage.cpp
  tour/TourPhrase.cpp
  tour/TourStop.cpp
  window/PictureDisplayLinux.cpp
  window/X11EditorWindow.cpp
  ${CMAKE_CURRENT_BINARY_DIR}/PageParts.cpp)
set(platform_libraries PkgConfig::SNDFILE PkgConfig::OGG PkgConfig::FFTW PNG::PNG PkgConfig::XCB
  ${CMAKE_DL_LIBS})
