# shellcheck shell=bash
# Puts together the site with the instrument in a browser: the page, the engine and the tour.

# shellcheck source=tools/build.sh
source "$(dirname "${BASH_SOURCE[0]}")/../tools/build.sh"

web_folder=$root/out/web
most_page_bytes=1048576 # 1 MB: the page with its pictures and the engine, without the tour

web_targets=(zelvatone_program zelvatone_module zelvatone_web_face zelvatone_phrase_hashes)

# put_engine: the scripts, the module, and the hashes of what this machine makes of the phrase. The
# module is packed in the file itself: simple servers pack nothing on the way.
put_engine() {
    cp "$root"/web/engine/{engine,synth,synth-worklet,phrase-worker}.js "$web_folder"
    gzip -9 -n -c "$root/build/web/bin/zelvatone.wasm" >"$web_folder/zelvatone.wasm.gzip"
    "$root/build/release/bin/zelvatone_phrase_hashes" >"$web_folder/hashes.json"
}

# put_site: the tour first, because the page shows what it says of each program.
put_site() {
    rm -rf "$web_folder"
    mkdir -p "$web_folder"
    "$root/build/release/bin/zelvatone" tour --site "$web_folder/tour" --quiet \
        --play-at ../index.html
    put_engine
    python3 -B "$root/web/put_page.py" --face "$root/build/release/bin/zelvatone_web_face" \
        "$web_folder"
}

# page_files: what a browser may load of the page, without the tour.
page_files() {
    find "$web_folder" -path "$web_folder/tour" -prune -o -type f -print
}

# bytes_of: the sum of the sizes of the files that are named on standard input, as they are.
bytes_of() {
    xargs -d '\n' cat | wc -c
}

# packed_bytes_of: the same when a server packs each of them.
packed_bytes_of() {
    xargs -d '\n' -n 1 gzip -9 -n -c | wc -c
}

# report_sizes: says how large the site is, and fails for a page that is too large.
report_sizes() {
    local page packed all
    page=$(page_files | bytes_of)
    packed=$(page_files | packed_bytes_of)
    all=$(find "$web_folder" -type f | bytes_of)
    note "the page: $((page / 1000)) kB, packed $((packed / 1000)) kB; with the tour $((all / 1000)) kB"
    ((page <= most_page_bytes)) || fail "the page has $page bytes, more than $most_page_bytes"
}

# pack_web: the whole of ./package --web.
pack_web() {
    plan 3
    step "Looking for packages"
    require_packages build display web
    step "Building"
    configure_product release
    build release "${web_targets[@]}"
    configure web
    build web zelvatone_wasm
    step "Putting the site together"
    logged_or_fail package-web "Putting the site together" put_site
    report_sizes
    say
    say "The site is in $(realpath --relative-to=. "$web_folder"); to open it:"
    say "  python3 -m http.server -d $(realpath --relative-to=. "$web_folder")"
}
