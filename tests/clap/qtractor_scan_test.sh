#!/usr/bin/env bash
# Usage: qtractor_scan_test.sh FILE
#
# Lets the plug-in scan of qtractor, an independent host, look at the CLAP FILE: it must find one
# instrument with no audio inputs, two outputs, one MIDI input, 23 parameters and an editor. Ends with
# 77, which CTest takes for skipped, where qtractor is not installed.

set -euo pipefail
export LC_ALL=C.UTF-8
file=$1

scan=$(find /usr/lib -path '*qtractor/qtractor_plugin_scan' 2>/dev/null | head -n 1)
if [[ -z $scan ]]; then
    printf 'skipped: qtractor is not installed\n'
    exit 77
fi
found=$(printf 'CLAP:%s:0\n' "$file" | QT_QPA_PLATFORM=offscreen timeout 60 "$scan")
printf '%s\n' "$found"
[[ $found == 'CLAP|Zelvatone|0:2|1:0|23:0|GUI'* ]]
