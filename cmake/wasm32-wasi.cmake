# Builds for WebAssembly with Debian's clang-14, lld-14, wasi-libc, libc++-14-dev-wasm32 and
# libclang-rt-14-dev-wasm32.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)

set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)

# Vectors, and conversions to integer that do not end the program where a number does not fit:
# every browser since 2023 has both. There are no exceptions.
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -mnontrapping-fptoint -fno-exceptions")

# Programs are the build machine's; headers and libraries are the system's own and nothing else.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
