# Every target of this project links `zelvatone_settings` and compiles the same way.
add_library(zelvatone_settings INTERFACE)

target_compile_options(zelvatone_settings INTERFACE
  -Wall -Wextra -Wpedantic -Werror
  # g++ would also take a constructor argument named like the member that it sets.
  $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>
  -Wold-style-cast -Wcast-qual -Wundef
  # Makes each rounding to float, and each float to integer step, visible as a cast.
  # Array indices are int32, as the interface counts; clang would want a cast at each.
  -Wconversion -Wno-sign-conversion
  # The sound is defined operation by operation: a fused multiply-add rounds once where two
  # roundings belong, and changes the last bit.
  -ffp-contract=off)

# Leaf directories may be included by their own name only: "engine/ModeVoice.h".
target_include_directories(zelvatone_settings INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(ZELVATONE_SANITIZE)
  target_compile_options(zelvatone_settings INTERFACE
    -fsanitize=${ZELVATONE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zelvatone_settings INTERFACE -fsanitize=${ZELVATONE_SANITIZE})
  if(ZELVATONE_SANITIZE MATCHES undefined AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # Up to half of what g++ spends on a source goes into these checks of addresses. The address
    # sanitizer looks at each access itself, and clang's sanitizers keep them for the sound.
    target_compile_options(zelvatone_settings INTERFACE
      -fno-sanitize=null,alignment,object-size,vptr,pointer-overflow)
  endif()
endif()
