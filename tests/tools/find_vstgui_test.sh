#!/usr/bin/env bash
# Tests cmake/FindVSTGUI.cmake with folders that look like VSTGUI's and hold an empty library.

set -euo pipefail
# shellcheck source=tests/tools/expect.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/expect.sh"

root=$sandbox/sources

# make_sources: the headers that tell the version.
make_sources() {
    mkdir -p "$root/vstgui/lib"
    touch "$root/vstgui/vstgui.h"
    printf '#define VSTGUI_VERSION_%s\n' 'MAJOR 4' 'MINOR 14' 'PATCHLEVEL 2' \
        >"$root/vstgui/lib/vstguibase.h"
}

# make_library FOLDER
make_library() {
    mkdir -p "$1"
    ar -rc "$1/libvstgui.a"
}

# find_it OPTION...: writes down what the search found.
find_it() {
    mkdir -p "$sandbox/project"
    cat >"$sandbox/project/CMakeLists.txt" <<EOF
cmake_minimum_required(VERSION 3.25)
project(search LANGUAGES NONE) # a compiler takes seconds to find, and tells no more than this:
set(CMAKE_FIND_LIBRARY_PREFIXES lib)
set(CMAKE_FIND_LIBRARY_SUFFIXES .so .a)
list(APPEND CMAKE_MODULE_PATH $project/cmake)
find_package(VSTGUI 4 REQUIRED)
get_target_property(definitions vstgui INTERFACE_COMPILE_DEFINITIONS)
get_target_property(libraries vstgui INTERFACE_LINK_LIBRARIES)
message(STATUS "library \${VSTGUI_LIBRARY}")
message(STATUS "definitions \${definitions}")
message(STATUS "libraries \${libraries}")
EOF
    capture cmake -S "$sandbox/project" -B "$sandbox/project/build" -DVSTGUI_ROOT="$root" "$@"
    expect_status 0
}

FindsALibraryBuiltBelowItsSources() {
    make_sources
    make_library "$root/build/Release/libs"
    find_it
    expect_says "library $root/build/Release/libs/libvstgui.a"
}

FindsALibraryBuiltElsewhere() {
    make_sources
    make_library "$sandbox/elsewhere/Release/libs"
    find_it -DVSTGUI_BUILD_DIR="$sandbox/elsewhere"
    expect_says "library $sandbox/elsewhere/Release/libs/libvstgui.a"
}

TakesADebugBuildForOne() {
    make_sources
    make_library "$root/build/Debug/libs"
    find_it
    expect_says 'definitions $<$<BOOL:ON>:DEBUG=1>'
}

LeavesTheCompilersOptionsAlone() {
    make_sources
    make_library "$root/lib"
    find_it
    expect_says '$<LINK_ONLY:PkgConfig::'
    expect_silent_about 'libraries PkgConfig'
    expect_silent_about ';PkgConfig'
}

run_rule "$@"
