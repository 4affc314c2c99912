#!/bin/sh
# Usage: ./uninstall.sh [--system [FOLDER]]
#
# Removes what install.sh with the same options has copied, and the folders that it made, where they
# are empty now.

set -eu
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source=packaging/tarball/folders.sh
. "$here/folders.sh"
choose_folders "$@"
if [ ! -f "$list" ]; then
    echo "${0##*/}: Zelvatone is not installed there: there is no $list" >&2
    exit 1
fi
remove_installed
echo "Zelvatone is removed."
