#!/usr/bin/env bash
# Usage: tools/tidy.sh [--before TIME | FILE...]
#
# Runs clang-tidy over the sources of the plug-in, its toolkit and all fronts, or over these files
# only, as many at a time as there are cores. Takes the compile commands of the clang preset and
# configures it when that has not been done. Sources for Windows are read with the headers of the
# cross-compiler; without one they are left out.
#
# Most of the time goes into the headers of libraries. So all sources are read in batches, each of
# which reads its headers once. Where clang-tidy finds something in a batch, it reads the sources of
# that batch one by one, and what it finds in those counts. Batches leave out the few checks that
# take as long as all others together; files that are named get them too. The order is another one
# every time: with --before, no batch is begun after TIME (seconds since 1970), and what is left out
# is named.

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

# In seconds of the processor for a usual batch: 11 of 34, and 7.
slow_checks='-clang-analyzer-*,-performance-unnecessary-value-param'

# findings_in FOLDER FILE: what clang-tidy finds in FILE, whose compile command is in FOLDER.
findings_in() {
    local options=(-p "$1" --quiet "$2")
    if is_for_windows "$2"; then
        mapfile -t options < <(printf '%s\n' --quiet "$2" -- && windows_flags)
    fi
    clang-tidy --checks="${checks:-}" "${options[@]}" 2>&1
}

# tidy_sources FILE...: says which file it is, then what clang-tidy finds in it.
tidy_sources() {
    local file findings status=0
    for file in "$@"; do
        printf '%s\n' "$file"
        findings=$(findings_in build/clang "$file") || { printf '%s\n' "$findings" && status=1; }
    done
    return "$status"
}

# tidy_batch BATCH FILE...: the same for the files of a batch; one file needs none.
tidy_batch() {
    local batch=$1
    shift
    if is_for_windows "$1" && ! command -v "$windows_compiler" >/dev/null; then
        printf 'left out, without a cross-compiler: %s\n' "$*"
    elif (($# > 1)) && findings_in build/clang/tidy "$batch" >/dev/null; then
        printf '%s\n' "$@"
    else
        tidy_sources "$@"
    fi
}

# tidy_line LINE: a batch and its files, with tabs between them.
tidy_line() {
    local fields
    IFS=$'\t' read -ra fields <<<"$1"
    if [[ -n ${deadline:-} ]] && (($(date +%s) >= deadline)); then
        printf 'left for another time: %s\n' "${fields[*]:1}"
        return
    fi
    tidy_batch "${fields[@]}"
}
export -f findings_in tidy_sources tidy_batch tidy_line is_for_windows windows_flags
export windows_compiler=x86_64-w64-mingw32-g++-posix

[[ -f build/clang/compile_commands.json ]] || cmake --preset clang >/dev/null

if [[ ${1:-} == --before ]]; then
    export deadline=$2
    shift 2
fi
(($# > 0)) || export checks=$slow_checks # added to those of .clang-tidy
if (($# > 0)); then
    printf -- '-\t%s\n' "$@"
else
    find src host tour dataset web live cli vstgui -name '*.cpp' | sort | xargs tools/tidy_batches.py build/clang | shuf
fi | xargs -d '\n' -n 1 -P "$(nproc)" bash -c 'tidy_line "$@"' tidy_line
