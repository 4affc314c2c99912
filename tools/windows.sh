#!/usr/bin/env bash
# Usage: tools/windows.sh
#
# Compiles the engine for Windows with Debian's cross compiler, sees that no kernel relies on a
# stack that Windows does not align, and, where wine is installed, lets every renderer play there:
# all must make the same sound. Needs what tools/packages.txt lists as `build` and `windows`.

set -euo pipefail
export LC_ALL=C.UTF-8
# shellcheck source=tools/say.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/say.sh"
# shellcheck source=tools/build.sh
source "$root/tools/build.sh"

compiler=x86_64-w64-mingw32-g++-posix
folder=$root/build/windows
program=$folder/bin/zelvatone_render_bench.exe

configure_for_windows() {
    logged_or_fail configure-windows "Configuring" cmake -S "$root" -B "$folder" -G Ninja \
        -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=$compiler \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
        -DCMAKE_EXE_LINKER_FLAGS=-static \
        -DZELVATONE_BUILD_HOST=OFF -DZELVATONE_BUILD_TESTS=OFF
}

# aligned_wide_moves OBJECT: prints the moves between memory and registers wider than 16 bytes that
# fault when the address is not aligned.
aligned_wide_moves() {
    x86_64-w64-mingw32-objdump -d "$1" |
        grep -E 'vmov(aps|apd|dqa|dqa32|dqa64|ntps|ntdq) ' | grep -E '%[yz]mm.*\(|\(.*%[yz]mm' || true
}

check_alignment() {
    local object moves checked=0
    while IFS= read -r object; do
        moves=$(aligned_wide_moves "$object")
        [[ -z $moves ]] || fail "${object##*/} moves wide vectors as if the stack were aligned: $moves"
        checked=$((checked + 1))
    done < <(find "$folder/src" -name 'Kernel*.obj')
    ((checked > 0)) || fail "no kernel was compiled"
}

play_under_wine() {
    if ! command -v wine >/dev/null; then
        note "wine is not installed: compiled, not run"
        return
    fi
    WINEDEBUG=-all WINEPREFIX=$folder/wine logged_or_fail play-windows "Playing" wine "$program"
}

(($# == 0)) || usage_error "takes no arguments"
command -v $compiler >/dev/null || fail "needs the package g++-mingw-w64-x86-64-posix"
use_sensible_jobs
plan 3
step "Compiling for Windows"
configure_for_windows
logged_or_fail build-windows "Building" cmake --build "$folder" --target zelvatone_render_bench
step "Looking at the kernels' moves"
check_alignment
step "Playing under wine"
play_under_wine
