# shellcheck shell=bash disable=SC2034 # those who source it use the folders
# What every packer needs: the version, the one time that all files get, staging and archives.

# shellcheck source=tools/say.sh
source "$(dirname "${BASH_SOURCE[0]}")/../tools/say.sh"

release_folder=$root/out/release
work_folder=$root/build/packages # what the packers lay out; the results go to $release_folder

# The version stands in the top CMakeLists.txt alone.
release_version() {
    sed -n 's/^project(zelvatone VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"
}

notes() {
    "$root/packaging/release_notes.py" "$@" "$(release_version)" "$root/CHANGELOG.md"
}

# use_release_time: all files carry the day of the release, whenever they are built, and are laid
# out alike for every user.
use_release_time() {
    local day
    day=$(notes --date) || fail "cannot read the day of the release"
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(date -u -d "$day" +%s)}
    export SOURCE_DATE_EPOCH TZ=UTC
    umask 022
}

# stage PRESET COMPONENT FOLDER: installs one component there, without symbols.
stage() {
    cmake --install "$root/build/$1" --component "$2" --prefix "$3" --strip >/dev/null
}

# give_release_time FOLDER
give_release_time() {
    find "$1" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
}

# sorted_files FOLDER: the files and links below it, one a line, the same order everywhere.
sorted_files() {
    (cd "$1" && find . \( -type f -o -type l \) -printf '%P\n' | sort)
}
