# shellcheck shell=bash
# Makes the archive for all Linux systems: a folder for each plug-in format, and scripts that copy
# them to where hosts look.

# shellcheck source=packaging/files.sh
source "$(dirname "${BASH_SOURCE[0]}")/files.sh"

# libraries_of FILE: the names of those that it loads, one a line.
libraries_of() {
    objdump -p "$1" | sed -n 's/^ *NEEDED *//p' | sort
}

# lay_out_tarball FOLDER
lay_out_tarball() {
    local folder=$1 component
    rm -rf "$folder"
    mkdir -p "$folder"
    for component in program vst lv2 clap; do
        stage release "$component" "$folder" || return
    done
    mv "$folder"/lib/* "$folder"
    rmdir "$folder/lib"
    cp "$root"/packaging/tarball/{install.sh,uninstall.sh,folders.sh} "$root/LICENSE" "$folder"
    {
        cat "$root/packaging/tarball/README.txt"
        libraries_of "$folder/bin/zelvatone" | sed 's/^/    /'
    } >"$folder/README.txt"
    cp "$root/packaging/debian/copyright" "$folder/COPYRIGHT"
    cp "$release_folder/RELEASE-NOTES.md" "$folder"
}

pack_tarball() {
    local name
    name=zelvatone-$(release_version)-linux-$(uname -m)
    lay_out_tarball "$work_folder/$name" || return
    give_release_time "$work_folder/$name"
    tar --create --directory "$work_folder" --sort=name --format=gnu --owner=root:0 --group=root:0 \
        --mtime="@$SOURCE_DATE_EPOCH" "$name" | gzip -9n >"$release_folder/$name.tar.gz"
}
