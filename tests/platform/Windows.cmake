# The tests of the Windows build run under Wine and stand in a folder of their own.
add_subdirectory(clap)
add_subdirectory(windows)
