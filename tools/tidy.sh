#!/usr/bin/env bash
# Usage: tools/tidy.sh [FILE...]
#
# Runs clang-tidy over the sources of the plug-in, its toolkit and the host, or over these files
# only, as many at a time as there are cores. Takes the compile commands of the clang preset and
# configures it when that has not been done. Sources for Windows are read with the headers of the
# cross-compiler; without one they are left out.

set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")"

# windows_flags: how clang compiles for Windows: with the cross-compiler's headers, except the few
# that are the compiler's own, and after them Debian's, for the libraries that are headers only.
windows_flags() {
    local folder
    printf '%s\n' --target=x86_64-w64-mingw32 -std=c++20 -nostdinc++ -Wno-pragma-pack \
        -I. -Isrc -Isrc/vst2
    "$windows_compiler" -xc++ -E -v /dev/null 2>&1 | sed -n '/#include </,/End of/ s/^ //p' |
        grep -vE '/[0-9]+-posix/include(-fixed)?$' |
        while read -r folder; do printf '%s\n' -isystem "$folder"; done
    printf '%s\n' -idirafter /usr/include
}

is_for_windows() {
    [[ $1 == *Windows.cpp || $1 == */[Ww]in32* ]]
}

# tidy_one COUNT FILE: says which file it is, then what clang-tidy finds in it.
tidy_one() {
    local findings status=0 options=(-p build/clang --quiet "$2")
    if is_for_windows "$2"; then
        command -v "$windows_compiler" >/dev/null || return 0
        mapfile -t options < <(printf '%s\n' --quiet "$2" -- && windows_flags)
    fi
    findings=$(clang-tidy "${options[@]}" 2>&1) || status=1
    printf '[%s] %s\n' "$1" "$2"
    ((status == 0)) || printf '%s\n' "$findings"
    return "$status"
}
export -f tidy_one is_for_windows windows_flags
export windows_compiler=x86_64-w64-mingw32-g++-posix

[[ -f build/clang/compile_commands.json ]] || cmake --preset clang >/dev/null

if (($# > 0)); then
    files=("$@")
else
    mapfile -t files < <(find src host tour cli vstgui -name '*.cpp' | sort)
fi
for index in "${!files[@]}"; do
    printf '%d/%d\0%s\0' $((index + 1)) ${#files[@]} "${files[index]}"
done | xargs -0 -n 2 -P "$(nproc)" bash -c 'tidy_one "$@"' tidy_one
