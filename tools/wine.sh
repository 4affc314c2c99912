#!/usr/bin/env bash
# Usage: tools/wine.sh COMMAND...
#
# Runs COMMAND, be it `wine PROGRAM.exe` or `ctest --preset windows`, with a Windows of the
# project's own (Wine's prefix in build/wine-prefix, made at the first call) and an invisible
# screen. All that Wine has started for it is stopped afterwards.

set -euo pipefail
export LC_ALL=C.UTF-8
# shellcheck source=tools/say.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/say.sh"

export WINEPREFIX=${ZELVATONE_WINE_PREFIX:-$root/build/wine-prefix}
export WINEARCH=win64
export WINEDEBUG=-all # Wine reports much that is missing and not needed here
# Neither the .NET nor the HTML engine, which Wine would offer to download.
export WINEDLLOVERRIDES='mscoree,mshtml='

# In the prefix when it is whole: one whose making was interrupted is made again.
made=$WINEPREFIX/made-by-zelvatone

set_value() {
    wine reg add "HKCU\\Software\\Wine\\$1" /f /v "$2" /d "$3"
}

make_prefix() {
    [[ ! -e $made ]] || return 0
    rm -rf "$WINEPREFIX"
    wine wineboot --init
    # Texts in Arial come out in its metric twin, which Debian has.
    set_value 'Fonts\Replacements' Arial 'Liberation Sans'
    # The screen has no window manager; Wine would wait two seconds for its word on each window.
    set_value 'X11 Driver' Managed N
    wineserver --wait
    touch "$made"
}

# start_screen: with colours of 24 bits, so that what the editor draws arrives as it was drawn, and
# room for an editor of three times its size.
start_screen() {
    local reply number
    exec {reply}< <(exec {session}>&- && exec Xvfb -displayfd 1 -screen 0 2400x1700x24 -nolisten tcp 2>/dev/null)
    screen=$!
    read -r number <&"$reply" || fail "Xvfb does not start"
    export DISPLAY=:$number
}

# keep_running: Windows takes seconds to start, and its services and desktop hold on to the output
# of the program that starts them. So they are started here, and a program that waits for input keeps them.
keep_running() {
    # shellcheck disable=SC2034 # nothing is ever written to it
    exec {input}> >(exec {session}>&- && exec wine cmd >/dev/null 2>&1)
    wine wineboot >/dev/null 2>&1
}

# stop: ends the prefix's programs, then the screen; a program that has ended by itself is not a failure.
stop() {
    wineserver --kill || true
    wineserver --wait || true
    kill "$screen" || true
}

(($# > 0)) || usage_error "no command given"
if [[ ${1:-} == --help ]]; then
    help_from_head "${BASH_SOURCE[0]}" && exit
fi
mkdir -p "$(dirname "$WINEPREFIX")"
# A second session waits: the end of the first would end its programs too.
exec {session}>"$WINEPREFIX.lock"
flock "$session"
start_screen
trap stop EXIT
make_prefix >&2
keep_running
"$@"
