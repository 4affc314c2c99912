# zelvatone_add_tests(NAME name SOURCES files... LIBRARIES targets... [LABEL fast|slow] [THREADS])
#
# THREADS: has tests of several threads, or of programs with several. The thread sanitizer runs all
# tests of these programs and no others: the target `threaded_tests`, the label `threads`.
function(zelvatone_add_tests)
  cmake_parse_arguments(ARG "THREADS" "NAME;LABEL" "SOURCES;LIBRARIES" ${ARGN})
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
  gtest_discover_tests(${ARG_NAME} DISCOVERY_TIMEOUT 60 TEST_LIST discovered_tests
    PROPERTIES LABELS ${ARG_LABEL} COST ${cost})
  if(ARG_THREADS)
    # The function above takes one label; CTest reads this file after those tests.
    set(label_file ${CMAKE_CURRENT_BINARY_DIR}/${ARG_NAME}_labels.cmake)
    file(WRITE ${label_file}
      "if(discovered_tests) # built\n"
      "  set_tests_properties(\${discovered_tests} PROPERTIES LABELS \"${ARG_LABEL};threads\")\n"
      "endif()\n"
      "unset(discovered_tests)\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${label_file})
    list(TRANSFORM ARG_SOURCES PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set_property(GLOBAL APPEND PROPERTY ZELVATONE_THREADED_PROGRAMS ${ARG_NAME})
    set_property(GLOBAL APPEND PROPERTY ZELVATONE_THREADED_SOURCES ${ARG_SOURCES})
  endif()
endfunction()

# To be called when all tests are known: the target `threaded_tests`, a list of its programs for
# ./check, and a test that no source with threads is outside it.
function(zelvatone_finish_threaded_tests)
  get_property(programs GLOBAL PROPERTY ZELVATONE_THREADED_PROGRAMS)
  get_property(sources GLOBAL PROPERTY ZELVATONE_THREADED_SOURCES)
  add_custom_target(threaded_tests DEPENDS ${programs})
  list(JOIN programs "\n" programs)
  list(JOIN sources "\n" sources)
  file(WRITE ${CMAKE_BINARY_DIR}/threaded-programs.txt "${programs}\n")
  file(WRITE ${CMAKE_BINARY_DIR}/threaded-sources.txt "${sources}\n")
  add_test(NAME ThreadedTests.AreAllWatchedByTheThreadSanitizer
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/tools/threaded_tests_test.sh
      ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_BINARY_DIR}/threaded-sources.txt)
  set_tests_properties(ThreadedTests.AreAllWatchedByTheThreadSanitizer PROPERTIES LABELS fast)
endfunction()
