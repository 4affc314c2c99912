# The browser's engine against this machine's.
if(zelvatone_platform STREQUAL Web)
  set(kernel_tests ${PROJECT_SOURCE_DIR}/tests/kernel)
  add_executable(zelvatone_fingerprints
    Fingerprints.cpp PrintedLinesWeb.cpp ${kernel_tests}/Scenario.cpp ${kernel_tests}/EngineState.cpp)
  set_target_properties(zelvatone_fingerprints PROPERTIES SUFFIX .wasm)
  target_link_libraries(zelvatone_fingerprints PRIVATE zelvatone_formats)
  target_include_directories(zelvatone_fingerprints PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_options(zelvatone_fingerprints PRIVATE -Wl,-z,stack-size=1048576)
  return()
endif()

# The modules for a browser are built beside this machine's programs: once, not for each kind of
# sanitizer.
if(ZELVATONE_SANITIZE OR NOT TARGET zelvatone_program)
  return()
endif()
add_executable(zelvatone_fingerprints Fingerprints.cpp)
target_link_libraries(zelvatone_fingerprints PRIVATE zelvatone_kernel_testing zelvatone_formats)

find_program(ZELVATONE_NODE NAMES node nodejs)
find_program(ZELVATONE_WEB_COMPILER NAMES clang++-14)
find_program(ZELVATONE_WEB_LINKER NAMES wasm-ld-14)
set(missing "")
if(NOT ZELVATONE_NODE)
  set(missing node)
elseif(NOT ZELVATONE_WEB_COMPILER)
  set(missing clang++-14)
elseif(NOT ZELVATONE_WEB_LINKER)
  set(missing wasm-ld-14)
elseif(NOT EXISTS /usr/include/wasm32-wasi/c++/v1/vector)
  set(missing libc++-14-dev-wasm32)
endif()
if(missing)
  add_test(NAME WebEngine.IsTheSameAsHere COMMAND ${CMAKE_COMMAND} -E echo "skipped: no ${missing}")
  set_tests_properties(WebEngine.IsTheSameAsHere PROPERTIES
    LABELS web SKIP_REGULAR_EXPRESSION "^skipped")
  return()
endif()

add_custom_target(zelvatone_web_modules ALL
  COMMAND sh -c "cmake --preset web -DZELVATONE_BUILD_TESTS=ON >/dev/null || cmake --fresh --preset web"
  COMMAND ${CMAKE_COMMAND} --build ${PROJECT_SOURCE_DIR}/build/web --parallel 1
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Building the engine for a browser"
  VERBATIM)
add_test(NAME WebEngine.IsTheSameAsHere
  COMMAND ${ZELVATONE_NODE} --no-warnings ${CMAKE_CURRENT_SOURCE_DIR}/EngineTest.mjs)
set_tests_properties(WebEngine.IsTheSameAsHere PROPERTIES
  LABELS web TIMEOUT 300
  ENVIRONMENT "ZELVATONE_WEB=${PROJECT_SOURCE_DIR}/build/web/bin;ZELVATONE_NATIVE=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")

find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)
add_test(NAME WebEngine.IsTheSameOnTheAudioThreadOfABrowser
  COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/WorkletTest.py)
set_tests_properties(WebEngine.IsTheSameOnTheAudioThreadOfABrowser PROPERTIES
  LABELS web TIMEOUT 300 SKIP_RETURN_CODE 77
  ENVIRONMENT "ZELVATONE_WEB=${PROJECT_SOURCE_DIR}/build/web/bin;ZELVATONE_NATIVE=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
