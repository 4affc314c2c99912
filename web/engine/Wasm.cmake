# zelvatone.wasm: no main function, a memory that it can read from a module's import, and functions
# by their names in Binding.cpp.
add_executable(zelvatone_wasm $<TARGET_OBJECTS:zelvatone_web_engine>)
set_target_properties(zelvatone_wasm PROPERTIES OUTPUT_NAME zelvatone SUFFIX .wasm)
target_link_libraries(zelvatone_wasm PRIVATE zelvatone_web_engine)
# The largest need is that of a rendered phrase, 1.2 MB; the sound alone never asks for more than
# it has at the start.
target_link_options(zelvatone_wasm PRIVATE
  -mexec-model=reactor -Wl,--initial-memory=4194304 -Wl,--max-memory=16777216 -Wl,--strip-all)
