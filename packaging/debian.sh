# shellcheck shell=bash
# Makes the Debian packages from the components of the release build.

# shellcheck source=packaging/files.sh
source "$(dirname "${BASH_SOURCE[0]}")/files.sh"

debian_folder=$work_folder/debian-source # where dpkg's tools look for debian/control

debian_packages() {
    sed -n 's/^Package: //p' "$root/packaging/debian/control"
}

# prepare_debian_folder: what dpkg's tools read. The version's last part counts packagings.
prepare_debian_folder() {
    rm -rf "$debian_folder"
    mkdir -p "$debian_folder/debian"
    cp "$root/packaging/debian/control" "$debian_folder/debian"
    {
        printf 'zelvatone (%s-1) unstable; urgency=medium\n\n' "$(release_version)"
        printf '  * Zelvatone %s; changelog.gz tells what is new.\n\n' "$(release_version)"
        printf ' -- %s  %s\n' "$(sed -n 's/^Maintainer: //p' "$root/packaging/debian/control")" \
            "$(LC_ALL=C date -u -R -d "@$SOURCE_DATE_EPOCH")"
    } >"$debian_folder/debian/changelog"
}

# lay_out_debian_package PACKAGE FOLDER: the files that it installs.
lay_out_debian_package() {
    local package=$1 folder=$2 doc=$2/usr/share/doc/$1 shared=$2/usr/share/doc/zelvatone
    mkdir -p "$doc"
    case $package in
    zelvatone) stage release program "$folder/usr" ;;
    zelvatone-doc)
        mkdir -p "$shared/examples"
        cp -r "$work_folder/tour" "$shared/tour"
        cp -r "$root"/docs/. "$shared"
        cp "$root"/music/{invention-1.mid,moves.csv} "$shared/examples"
        ;;
    *) stage release "${package#zelvatone-}" "$folder/usr" ;;
    esac
    cp "$root/packaging/debian/copyright" "$doc/copyright"
    gzip -9nc "$debian_folder/debian/changelog" >"$doc/changelog.Debian.gz"
    gzip -9nc "$root/CHANGELOG.md" >"$doc/changelog.gz"
    find "$folder" -path '*/man/*' -name '*.1' -exec gzip -9n {} +
    install -D -m 644 "$root/packaging/debian/lintian-overrides" \
        "$folder/usr/share/lintian/overrides/$package"
}

# compute_dependencies PACKAGE FOLDER: from the libraries that its files name and the symbols that
# they take from them.
compute_dependencies() {
    local package=$1 folder=$2 file binaries=()
    while IFS= read -r file; do
        [[ $(head -c 4 "$folder/$file") != $'\x7fELF' ]] || binaries+=("$folder/$file")
    done < <(sorted_files "$folder")
    ((${#binaries[@]} > 0)) || return 0
    (cd "$debian_folder" && dpkg-shlibdeps -T"debian/$package.substvars" "${binaries[@]}")
}

# pack_debian PACKAGE
pack_debian() {
    local package=$1 folder=$work_folder/debian/$1
    rm -rf "$folder"
    lay_out_debian_package "$package" "$folder"
    compute_dependencies "$package" "$folder"
    mkdir "$folder/DEBIAN"
    (cd "$folder" && sorted_files . | grep -v '^DEBIAN/' | tr '\n' '\0' | xargs -0 md5sum >DEBIAN/md5sums)
    (cd "$debian_folder" && dpkg-gencontrol -p"$package" -P"$folder" -Tdebian/"$package".substvars)
    give_release_time "$folder"
    dpkg-deb --root-owner-group -Zxz --build "$folder" "$release_folder"
}

pack_all_debian() {
    local package
    prepare_debian_folder
    for package in $(debian_packages); do
        pack_debian "$package" || return
    done
}
