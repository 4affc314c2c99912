# What makes a mistake in the code end the process instead of opening it to an attacker, and keeps
# the folder of the build out of the files. tests/plugin/HardeningTest.py reads all of it back.

# No path of the machine that built a file; a debugger and the sanitizers' reports want them.
if(NOT CMAKE_BUILD_TYPE STREQUAL Debug AND NOT ZELVATONE_SANITIZE)
  target_compile_options(zelvatone_settings INTERFACE
    -ffile-prefix-map=${PROJECT_BINARY_DIR}/= -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()

# A canary in front of the return address of every function with an array or a variable whose
# address is taken.
target_compile_options(zelvatone_settings INTERFACE -fstack-protector-strong)

if(WIN32)
  # The canary's functions are in a library there.
  target_link_options(zelvatone_settings INTERFACE -fstack-protector-strong
    # The same sources make the same file at any time.
    LINKER:--no-insert-timestamp)
  return()
endif()

# Indirect jumps land on marked places only, on processors that check it.
target_compile_options(zelvatone_settings INTERFACE -fcf-protection)
# The loader resolves all functions at once, and write-protects the table.
target_link_options(zelvatone_settings INTERFACE LINKER:-z,relro LINKER:-z,now)

# The C library's functions check the sizes of what they fill. Level 3 also knows sizes that are
# computed at run time. Without optimisation the library has nothing to check with, and the
# sanitizers check by themselves.
if(NOT CMAKE_BUILD_TYPE STREQUAL Debug AND NOT ZELVATONE_SANITIZE)
  set(fortify_level 2)
  if((CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12)
      OR (CMAKE_CXX_COMPILER_ID STREQUAL Clang AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 9))
    set(fortify_level 3)
  endif()
  # Some systems' compilers define a level by themselves.
  target_compile_options(zelvatone_settings INTERFACE
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${fortify_level})
endif()
