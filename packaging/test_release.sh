#!/usr/bin/env bash
# Usage: packaging/test_release.sh debian | tarball | windows
#
# Installs what ./package has made where it belongs, runs it, removes it, and looks for what is
# left: the Debian packages in a bare Debian, the archive in a user's home, the installer under
# Wine. The last line tells the result; what this machine cannot do is "skipped".

set -euo pipefail
export LC_ALL=C.UTF-8
# shellcheck source=packaging/files.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/files.sh"

song=$root/music/invention-1.mid
sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT
chmod 755 "$sandbox"

# expected_sound: what the build plays, to compare with what an installation plays.
expected_sound() {
    "$root/build/release/bin/zelvatone" render "$song" -o "$sandbox/expected.wav" --quiet
}

same_sound() {
    cmp "$sandbox/expected.wav" "$1" || fail "$1 is not what the build plays"
}

# files_of FOLDER: every file, folder and link of a system but what is its package manager's.
files_of() {
    (cd "$1" && find . -xdev \( -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/log \
        -o -path ./var/cache -o -path ./tmp -o -path ./proc -o -path ./dev -o -path ./root \) -prune \
        -o -print | sort)
}

# bare_debian FOLDER: without a compiler, with what a Debian cannot do without and the libraries
# that the packages name, from where this machine gets its own packages.
bare_debian() {
    local sources=(/etc/apt/sources.list /etc/apt/sources.list.d/*.list
        /etc/apt/sources.list.d/*.sources) present=() file
    for file in "${sources[@]}"; do
        [[ ! -s $file ]] || present+=("$file")
    done
    # dpkg need not wait for the disk, and the lists of packages are new.
    mmdebstrap --quiet --mode=root --variant=apt --dpkgopt=force-unsafe-io \
        --skip=cleanup/apt/lists "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$1" \
        "${present[@]}"
}

in_debian() {
    chroot "$sandbox/debian" env -i HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"
}

test_debian() {
    if (($(id -u) != 0)) || ! command -v mmdebstrap >/dev/null; then
        echo skipped
        return
    fi
    bare_debian "$sandbox/debian" || fail "cannot make a bare Debian"
    ! in_debian sh -c 'command -v c++ || command -v gcc' || fail "the bare Debian has a compiler"
    files_of "$sandbox/debian" >"$sandbox/before"
    mkdir "$sandbox/debian/root/release"
    cp "$release_folder"/*.deb "$song" "$sandbox/debian/root/release"
    in_debian sh -c 'apt-get install -q -y --no-install-recommends /root/release/zelvatone*.deb'
    in_debian sh -c 'cd /root && zelvatone render release/invention-1.mid -o song.wav --quiet'
    same_sound "$sandbox/debian/root/song.wav"
    in_debian sh -c 'cmp /root/release/invention-1.mid /usr/share/doc/zelvatone/examples/invention-1.mid'
    in_debian sh -c 'zelvatone info && gzip -t /usr/share/man/man1/zelvatone.1.gz'
    # Nothing that scans plug-ins is installed: they load when all their libraries are there.
    in_debian sh -c 'ldd /usr/lib/vst/zelvatone.so /usr/lib/clap/zelvatone.clap \
        /usr/lib/lv2/zelvatone.lv2/*.so >/root/libraries && ! grep "not found" /root/libraries'
    in_debian sh -c 'apt-get purge -q -y "zelvatone*" && apt-get autoremove --purge -q -y'
    files_of "$sandbox/debian" >"$sandbox/after"
    ! comm -13 "$sandbox/before" "$sandbox/after" | grep -i zelvatone || fail "the packages left files"
    echo "installed, played, removed"
}

# as_user COMMAND...: as a user without rights and with a home of their own.
as_user() {
    local run=(env -i HOME="$sandbox/home" LC_ALL=C.UTF-8 PATH="$PATH" "$@")
    if (($(id -u) == 0)); then
        setpriv --reuid=64001 --regid=64001 --clear-groups "${run[@]}"
    else
        "${run[@]}"
    fi
}

test_tarball() {
    local home=$sandbox/home name
    name=zelvatone-$(release_version)-linux-$(uname -m)
    mkdir -p "$home/.vst" "$home/unpacked"
    touch "$home/.vst/other.so"
    tar --extract --gzip --no-same-owner --directory "$home/unpacked" \
        --file "$release_folder/$name.tar.gz"
    (($(id -u) != 0)) || chown -R 64001:64001 "$home"
    files_of "$home" >"$sandbox/before"
    for _ in first again; do
        as_user "$home/unpacked/$name/install.sh"
    done
    as_user "$home/.local/bin/zelvatone" render "$song" -o "$home/song.wav" --quiet
    same_sound "$home/song.wav"
    [[ -f $home/.clap/zelvatone.clap && -f $home/.lv2/zelvatone.lv2/manifest.ttl ]] ||
        fail "the plug-ins are not where hosts look"
    rm "$home/song.wav"
    as_user sh "$home/.local/share/zelvatone/uninstall.sh"
    files_of "$home" >"$sandbox/after"
    cmp "$sandbox/before" "$sandbox/after" || fail "the archive's installation left files"
    echo "installed by a user, played, removed"
}

test_windows() {
    if ! command -v wine >/dev/null; then
        echo skipped
        return
    fi
    SANDBOX=$sandbox INSTALLER=$(echo "$release_folder"/*-installer.exe) SONG=$song \
        ZELVATONE_WINE_PREFIX=${ZELVATONE_WINE_PREFIX:-$root/build/wine-prefix} \
        "$root/tools/wine.sh" "$root/packaging/windows/test_installer.sh"
    echo "installed, played, removed"
}

(($# == 1)) || usage_error "takes one of debian, tarball and windows"
case $1 in
debian | tarball | windows) ;;
*) usage_error "unknown argument $1" ;;
esac
expected_sound
"test_$1"
