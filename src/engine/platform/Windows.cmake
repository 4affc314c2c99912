# The engine on Windows, which aligns the stack to 16 bytes. Some versions of g++ still move wider
# vectors there as if it were aligned for them; the assembler takes moves that need no alignment
# instead.
set(wide_vector_options "")
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  set(wide_vector_options -Wa,-muse-unaligned-vector-move)
endif()
