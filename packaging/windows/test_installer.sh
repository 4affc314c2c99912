#!/usr/bin/env bash
# Runs below tools/wine.sh: installs silently, plays, removes silently, and looks for what is left.
# SANDBOX is a folder to work in, INSTALLER the installer, SONG a MIDI file.
set -euo pipefail

drive=$WINEPREFIX/drive_c
folder="$drive/Program Files/Zelvatone"

# All but the copy of itself that the uninstaller runs as: Windows removes it at its next start.
files() {
    (cd "$drive" && find "Program Files" "Program Files (x86)" users -path '*/Temp/~nsu*' -prune \
        -o -print | sort)
}

# wait_until COMMAND...: the uninstaller goes on as a copy of itself after it returns.
wait_until() {
    local tries
    for ((tries = 0; tries < 100; tries++)); do
        ! "$@" || return 0
        sleep 0.2
    done
    return 1
}

is_gone() {
    [[ ! -e $1 ]]
}

files >"$SANDBOX/before"
wine "$INSTALLER" /S
[[ -f "$drive/Program Files/VSTPlugins/zelvatone.dll" ]]
[[ -f "$drive/Program Files/Common Files/CLAP/zelvatone.clap" ]]
wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelvatone' /v DisplayVersion
wine "$folder/zelvatone.exe" render "Z:$SONG" -o "Z:$SANDBOX/windows.wav" --quiet
[[ $(stat -c %s "$SANDBOX/windows.wav") == $(stat -c %s "$SANDBOX/expected.wav") ]]
wine "$folder/uninstall.exe" /S
wait_until is_gone "$folder"
if wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelvatone'; then
    exit 1
fi
files >"$SANDBOX/after"
diff "$SANDBOX/before" "$SANDBOX/after"
