#!/usr/bin/env bash
# Usage: tools/wine.sh COMMAND...
#
# Runs COMMAND, be it `wine PROGRAM.exe` or `ctest --preset windows`, with a Windows of the
# project's own (Wine's prefix in build/wine-prefix, made at the first call) and a screen that
# nobody sees. All that Wine has started for it is stopped afterwards.

set -euo pipefail
export LC_ALL=C.UTF-8
# shellcheck source=tools/say.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/say.sh"

export WINEPREFIX=${ZELVATONE_WINE_PREFIX:-$root/build/wine-prefix}
export WINEARCH=win64
export WINEDEBUG=-all # Wine reports much that is missing and that nobody here needs
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
    mkdir -p "$(dirname "$WINEPREFIX")"
    wine wineboot --init
    # Texts in Arial come out in its metric twin, which Debian has.
    set_value 'Fonts\Replacements' Arial 'Liberation Sans'
    # The screen has no window manager; Wine would wait two seconds for its word on each window.
    set_value 'X11 Driver' Managed N
    wineserver --wait
    touch "$made"
}

# stop_wine: ends the prefix's programs; a server that has ended by itself is no failure.
stop_wine() {
    wineserver --kill || true
    wineserver --wait
}

(($# > 0)) || usage_error "no command given"
if [[ ${1:-} == --help ]]; then
    help_from_head "${BASH_SOURCE[0]}" && exit
fi
if [[ -z ${ZELVATONE_WINE_SCREEN:-} ]]; then
    # Colours of 24 bits: what the editor draws must arrive as it was drawn.
    export ZELVATONE_WINE_SCREEN=1
    exec xvfb-run --auto-servernum --server-args='-screen 0 1024x768x24 -nolisten tcp' \
        "${BASH_SOURCE[0]}" "$@"
fi
make_prefix >&2
trap stop_wine EXIT
"$@"
