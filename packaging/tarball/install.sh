#!/bin/sh
# Usage: ./install.sh [--system [FOLDER]]
#
# Copies Zelvatone to where music programs look: into your home folder, or with --system into FOLDER
# (/usr/local when not given) for all users. An earlier installation made by this script goes first.
# ./uninstall.sh removes everything again.

set -eu
umask 022
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=packaging/tarball/folders.sh
. "$here/folders.sh"
choose_folders "$@"

# make_folder FOLDER: with those above it; notes each one that was not there.
make_folder() {
    if [ ! -d "$1" ]; then
        make_folder "$(dirname "$1")"
        mkdir "$1"
        folders="folder $1
$folders"
    fi
}

# copy FROM INTO: FROM's files, with their folders, into the folder INTO.
copy() {
    (cd "$here/$1" && find . -type f) | sort | while IFS= read -r file; do
        printf '%s\n' "${file#./}"
    done >"$list.new"
    while IFS= read -r file; do
        make_folder "$(dirname "$2/$file")"
        rm -f "$2/$file" # a host that runs keeps the old file
        cp "$here/$1/$file" "$2/$file"
        files="$files
file $2/$file"
    done <"$list.new"
    rm "$list.new"
}

if [ -f "$list" ]; then
    remove_installed
fi
folders=
files=
make_folder "$share/zelvatone"
copy clap "$clap"
copy lv2 "$lv2"
copy vst "$vst"
copy bin "$bin"
copy share "$share"
cp "$here/uninstall.sh" "$here/folders.sh" "$share/zelvatone"
{
    printf '%s\n' "$files" "file $share/zelvatone/uninstall.sh" "file $share/zelvatone/folders.sh"
    printf '%s' "$folders"
} | sed '/^$/d' >"$list"

echo "Zelvatone is installed:"
echo "  CLAP     $clap/zelvatone.clap"
echo "  LV2      $lv2/zelvatone.lv2"
echo "  VST 2.4  $vst/zelvatone.so"
echo "  program  $bin/zelvatone"
case ":$PATH:" in
*":$bin:"*) ;;
*) echo "Your PATH has no $bin; add it to call the program by its name." ;;
esac
if [ "$clap" != "$HOME/.clap" ] && [ "$clap" != /usr/lib/clap ]; then
    echo "CLAP hosts look in ~/.clap and /usr/lib/clap: set CLAP_PATH=$clap for them."
fi
echo "To remove it: sh $share/zelvatone/uninstall.sh$again"
