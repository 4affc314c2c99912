# These load the plug-in's file the way Linux hosts do.
find_package(benchmark REQUIRED)

add_executable(zelvatone_bench LoadBenchmark.cpp)
target_link_libraries(zelvatone_bench PRIVATE
  zelvatone_settings zelvatone_vst2 benchmark::benchmark_main ${CMAKE_DL_LIBS})
target_compile_definitions(zelvatone_bench PRIVATE
  ZELVATONE_MODULE="$<TARGET_FILE:zelvatone_module>")
add_dependencies(zelvatone_bench zelvatone_module)

# Whole instruments, ours among others, in the command-line host.
if(TARGET zelvatone_host)
  add_executable(zelvatone_instrument_bench InstrumentBenchmark.cpp)
  target_link_libraries(zelvatone_instrument_bench PRIVATE
    zelvatone_settings zelvatone_vst2 zelvatone_host)
  target_compile_definitions(zelvatone_instrument_bench PRIVATE
    ZELVATONE_MODULE="$<TARGET_FILE:zelvatone_module>")
  add_dependencies(zelvatone_instrument_bench zelvatone_module)
endif()

# What a dataset costs beside the plug-in alone.
if(TARGET zelvatone_dataset)
  add_executable(zelvatone_dataset_bench DatasetBenchmark.cpp)
  target_link_libraries(zelvatone_dataset_bench PRIVATE
    zelvatone_settings zelvatone_dataset zelvatone_vst2)
  target_include_directories(zelvatone_dataset_bench PRIVATE ${PROJECT_SOURCE_DIR})
endif()
