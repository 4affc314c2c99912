# The header-only libraries of the host, for a cross-compiler: the build machine's own headers,
# which lie in the same folder, must stay out of its sight. So each library is linked into a folder
# that holds nothing else.
set(header_only ${CMAKE_BINARY_DIR}/header-only)
file(MAKE_DIRECTORY ${header_only})

# zelvatone_header_only(target folder header): the library in `folder`, known by one header.
function(zelvatone_header_only target folder header)
  find_path(${folder}_INCLUDE_DIR ${folder}/${header} PATHS /usr/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(CREATE_LINK ${${folder}_INCLUDE_DIR}/${folder} ${header_only}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} INTERFACE ${header_only})
endfunction()

zelvatone_header_only(CLI11::CLI11 CLI CLI.hpp)
zelvatone_header_only(fmt::fmt-header-only fmt core.h)
zelvatone_header_only(nlohmann_json::nlohmann_json nlohmann json.hpp)
