#!/usr/bin/env bash
# Usage: tools/tidy.sh [FILE...]
#
# Runs clang-tidy over the sources of the plug-in, its toolkit and the host, or over these files
# only, as many at a time as there are cores. Takes the compile commands of the clang preset and
# configures it when that has not been done.

set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")"

# tidy_one COUNT FILE: says which file it is, then what clang-tidy has against it.
tidy_one() {
    local findings status=0
    findings=$(clang-tidy -p build/clang --quiet "$2" 2>&1) || status=1
    printf '[%s] %s\n' "$1" "$2"
    ((status == 0)) || printf '%s\n' "$findings"
    return "$status"
}
export -f tidy_one

[[ -f build/clang/compile_commands.json ]] || cmake --preset clang >/dev/null

if (($# > 0)); then
    files=("$@")
else
    mapfile -t files < <(find src host vstgui -name '*.cpp' | sort)
fi
for index in "${!files[@]}"; do
    printf '%d/%d\0%s\0' $((index + 1)) ${#files[@]} "${files[index]}"
done | xargs -0 -n 2 -P "$(nproc)" bash -c 'tidy_one "$@"' tidy_one
