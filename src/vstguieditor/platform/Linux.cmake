# The editor on Linux: its pictures are part of its code.
set(platform_sources
  DoublePicturesLinux.cpp
  EditorPlatformLinux.cpp
  EmbeddedDoublePictures.cpp
  EmbeddedPictures.cpp
  PicturesLinux.cpp
  WebPageLinux.cpp)
set(platform_libraries "")
# The assembler finds the pictures here; the compiler's list of dependencies does not have them.
set_source_files_properties(EmbeddedPictures.cpp EmbeddedDoublePictures.cpp PROPERTIES
  COMPILE_OPTIONS "-Wa,-I${PROJECT_SOURCE_DIR}/resources"
  OBJECT_DEPENDS "${pictures}")
