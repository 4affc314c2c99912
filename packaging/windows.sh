# shellcheck shell=bash
# Makes the two files for Windows: an archive and an installer.

# shellcheck source=packaging/files.sh
source "$(dirname "${BASH_SOURCE[0]}")/files.sh"

# with_windows_lines FILE: prints it with the line ends of Windows.
with_windows_lines() {
    sed 's/$/\r/' "$1"
}

lay_out_windows() {
    local folder=$1 component
    rm -rf "$folder"
    mkdir -p "$folder"
    for component in program vst clap; do
        stage windows "$component" "$folder" || return
    done
    with_windows_lines "$root/packaging/windows/README.txt" >"$folder/README.txt"
    with_windows_lines "$root/LICENSE" >"$folder/LICENSE.txt"
    with_windows_lines "$root/packaging/debian/copyright" >"$folder/COPYRIGHT.txt"
    with_windows_lines "$release_folder/RELEASE-NOTES.md" >"$folder/RELEASE-NOTES.txt"
    chmod 644 "$folder"/*
}

pack_windows() {
    local name folder
    name=zelvatone-$(release_version)-windows-x64
    folder=$work_folder/$name
    lay_out_windows "$folder" || return
    give_release_time "$folder"
    rm -f "$release_folder/$name.zip"
    (cd "$work_folder" && sorted_files . | grep "^$name/" | zip -9 -X -q "$release_folder/$name.zip" -@) ||
        return
    makensis -V2 -NOCD -INPUTCHARSET UTF8 -DVERSION="$(release_version)" -DFILES="$folder" \
        -DRESULT="$release_folder/$name-installer.exe" "$root/packaging/windows/installer.nsi"
}
