#!/usr/bin/env bash
# Usage: packaging/build_twice.sh [--no-install]
#
# Is the release the same for everyone who builds it? Copies the sources into two folders, builds
# each as another user with another home, time zone, locale and umask, with sources of another age,
# and compares the sums of all files; diffoscope explains what differs. Takes as long as two builds
# from nothing. Not as root, both builds belong to the same user.

set -euo pipefail
# shellcheck source=tools/packages.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../tools/packages.sh"

sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT
chmod 755 "$sandbox"

# copy_sources FOLDER: what is tracked, as it is here; without git, all but what was built.
copy_sources() {
    mkdir -p "$1"
    if git -C "$root" rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        (cd "$root" && git ls-files -z | tar --create --null --files-from=-)
    else
        tar --create --directory "$root" --exclude=./build --exclude=./out .
    fi | tar --extract --directory "$1"
}

# build_as USER FOLDER AGE UMASK NAME=VALUE...: its log is build/logs/package-USER.log.
build_as() {
    local user=$1 folder=$2 age=$3 mask=$4 run=()
    shift 4
    copy_sources "$folder"
    find "$folder" -exec touch -h -d "$age" {} +
    mkdir -p "$sandbox/home-$user"
    if (($(id -u) == 0)); then
        chown -R "$user:$user" "$folder" "$sandbox/home-$user"
        run=(setpriv --reuid="$user" --regid="$user" --clear-groups)
    fi
    # shellcheck disable=SC2016 # the inner shell expands it
    logged_or_fail "package-$user" "The build of user $user" "${run[@]}" \
        env -i HOME="$sandbox/home-$user" PATH="$PATH" CCACHE_DISABLE=1 \
        CMAKE_BUILD_PARALLEL_LEVEL="${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}" "$@" \
        bash -c 'umask "$1" && "$2/package" --no-install' bash "$mask" "$folder"
}

# explain_differences FIRST SECOND: diffoscope's words about each file that differs.
explain_differences() {
    local file
    for file in "$1"/*; do
        cmp -s "$file" "$2/${file##*/}" ||
            diffoscope --max-report-size 20000 "$file" "$2/${file##*/}" || true
    done
}

case ${1:-} in
'') require_packages build display windows package ;;
--no-install) ;;
--help | -h) help_from_head "${BASH_SOURCE[0]}" && exit ;;
*) usage_error "unknown argument $1" ;;
esac
first=$sandbox/one second=$sandbox/another/and/deeper
plan 3
step "Building as the first user"
build_as 64001 "$first" "2026-01-02" 022 TZ=Asia/Tokyo LC_ALL=C
step "Building as the second user"
build_as 64002 "$second" "2026-11-02" 002 TZ=America/Denver LC_ALL=C.UTF-8 LANG=de_DE.UTF-8
step "Comparing"
if ! cmp -s "$first/out/release/SHA256SUMS" "$second/out/release/SHA256SUMS"; then
    explain_differences "$first/out/release" "$second/out/release"
    fail "the two builds differ"
fi
note "the same $(wc -l <"$first/out/release/SHA256SUMS") files"
