# shellcheck shell=bash
# Fetches what tests of the page take from npm; nothing of it is built in or released.

# shellcheck source=tools/say.sh
source "$(dirname "${BASH_SOURCE[0]}")/say.sh"
# shellcheck source=tools/packages.sh
source "$root/tools/packages.sh"

# fetch_from_npm: puts what tests/web/npm lists, with its checksums, into build/npm. Where npm cannot
# be reached, the test that wants it is skipped.
fetch_from_npm() {
    # Some packages of node have an npm of their own, beside which Debian's cannot stand.
    command -v npm >/dev/null || require_packages npm
    mkdir -p "$root/build/npm"
    cp "$root"/tests/web/npm/*.json "$root/build/npm/"
    logged npm npm ci --prefix "$root/build/npm" --no-audit --no-fund ||
        note "npm cannot be reached: a test of the page will be skipped"
}
