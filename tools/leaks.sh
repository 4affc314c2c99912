#!/usr/bin/env bash
# Usage: tools/leaks.sh
#
# Looks for memory errors and leaks in the release build: valgrind watches the host load the
# plug-in, ask it for everything it tells about itself, play a note and unload it. What the
# plug-in keeps on purpose is named in tests/valgrind.supp. ./check --valgrind builds first.

set -euo pipefail
# shellcheck source=tools/say.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/say.sh"

work=$root/build/release/leaks
host=$root/build/release/bin/zelvatone
# Valgrind's status for "found something"; the host itself ends with 0, 1 or 2.
found_something=9

# write_song FILE: a Standard MIDI File of half a second (96 ticks a quarter, 120 beats a minute):
# note 69 on, the wheel bent after a quarter of a second, note off. Valgrind runs some 50 times
# slower than the machine, so a whole piece would take minutes.
write_song() {
    {
        printf 'MThd\0\0\0\006\0\0\0\001\0\140'
        printf 'MTrk\0\0\0\020\0\220\105\144\060\340\0\120\060\200\105\0\0\377\057\0'
    } >"$1"
}

# Blocks that are lost with the block that points at them ("indirectly") are not counted: the kept
# engine is one such tree, and the root of any other is reported.
#
# watch NAME ARGUMENT...: runs the host with these arguments under valgrind.
watch() {
    local name=leaks-$1 status=0 kinds=definite,possible options
    options=(
        --error-exitcode="$found_something"
        --leak-check=full
        --show-leak-kinds="$kinds"
        --errors-for-leak-kinds="$kinds"
        --keep-debuginfo=yes # names of functions in a plug-in that is unloaded by then
        --num-callers=40)
    shift
    if [[ -f $root/tests/valgrind.supp ]]; then
        options+=(--suppressions="$root/tests/valgrind.supp")
    fi
    logged "$name" valgrind "${options[@]}" "$host" "$@" || status=$?
    if ((status != 0)); then
        show_failure "$name"
        ((status == found_something)) || fail "zelvatone $1 ended with status $status"
        fail "zelvatone $1 has errors or leaks; the whole output is in build/logs/$name.log"
    fi
    note "zelvatone $1: clean"
}

mkdir -p "$work"
write_song "$work/note.mid"
watch info info
watch params params --json
watch render render "$work/note.mid" -o "$work/note.wav" --quiet --tail 0.1
