# shellcheck shell=bash
# Configures and builds one preset.

# shellcheck source=tools/say.sh
source "$(dirname "${BASH_SOURCE[0]}")/say.sh"

# use_sensible_jobs: one compiler a core, but none without a gigabyte to itself: the largest test
# sources take about 700 MB. CMake's own variables, when set, win.
use_sensible_jobs() {
    local jobs gigabytes
    jobs=$(nproc)
    gigabytes=$(sed -n 's/^MemAvailable: *\([0-9]*\) kB/\1/p' /proc/meminfo 2>/dev/null) || true
    gigabytes=$((${gigabytes:-1048576} / 1048576))
    ((gigabytes >= jobs)) || jobs=$((gigabytes > 1 ? gigabytes : 1))
    export CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$jobs}
    export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$jobs}
}

# use_compiler_cache: with ccache, a source is compiled once for all branches and fresh build
# folders. The settings let it keep what uses the tests' precompiled headers, whose content it
# compares; nothing here asks for the time of the compilation. CMake's own variable, when set, wins.
use_compiler_cache() {
    command -v ccache >/dev/null || return 0
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
}

# configured_here PRESET: was the build folder configured for this tree, in this place, and with a
# generator and a compiler that are in use here?
configured_here() {
    local cache=$root/build/$1/CMakeCache.txt line compiler
    [[ -f $cache ]] || return 1
    for line in "CMAKE_HOME_DIRECTORY:INTERNAL=$root" \
        "CMAKE_CACHEFILE_DIR:INTERNAL=$root/build/$1" "CMAKE_GENERATOR:INTERNAL=Ninja"; do
        grep -qxF "$line" "$cache" || return 1
    done
    compiler=$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$cache")
    command -v "$compiler" >/dev/null
}

# configure PRESET [-DNAME=VALUE...]: a build folder that came along from elsewhere starts afresh.
configure() {
    local preset=$1 fresh=()
    shift
    if [[ -f $root/build/$preset/CMakeCache.txt ]] && ! configured_here "$preset"; then
        fresh=(--fresh)
    fi
    logged_or_fail "configure-$preset" "Configuring" \
        cmake "${fresh[@]}" --preset "$preset" -S "$root" "$@"
}

# build PRESET [TARGET...]: builds everything, or only the targets (files under the build folder).
build() {
    local preset=$1 start=$SECONDS
    shift
    logged_or_fail "build-$preset" "Building" \
        cmake --build "$root/build/$preset" ${1:+--target "$@"}
    note "built in $(duration $((SECONDS - start)))"
}
