# zelvatone_add_tests(NAME name SOURCES files... LIBRARIES targets... [LABEL fast|slow])
function(zelvatone_add_tests)
  cmake_parse_arguments(ARG "" "NAME;LABEL" "SOURCES;LIBRARIES" ${ARGN})
  if(NOT ARG_LABEL)
    set(ARG_LABEL fast)
  endif()
  set(cost 100)
  if(ARG_LABEL STREQUAL slow)
    set(cost 1)
  endif()
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  # Away from the product: build/<preset>/bin holds what a user runs.
  set_target_properties(${ARG_NAME} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/test-programs)
  target_link_libraries(${ARG_NAME} PRIVATE
    zelvatone_settings ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
  # Headers are named from the top folder: "tests/engine/EngineFixture.h".
  target_include_directories(${ARG_NAME} PRIVATE ${PROJECT_SOURCE_DIR})
  # The framework's headers are half of what a test costs the compiler: the first program of tests
  # compiles them for all. Tests are compiled more often than they run, so less is spent on them.
  target_compile_options(${ARG_NAME} PRIVATE $<$<CONFIG:Release>:-O1>)
  # clang writes the time into a precompiled header, and ccache would see a new one each time.
  target_compile_options(${ARG_NAME} PRIVATE
    $<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>)
  if(TARGET params_tests AND NOT ARG_NAME STREQUAL params_tests)
    target_precompile_headers(${ARG_NAME} REUSE_FROM params_tests)
  else()
    target_precompile_headers(${ARG_NAME} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  endif()
  gtest_discover_tests(${ARG_NAME} DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS ${ARG_LABEL} COST ${cost})
endfunction()
