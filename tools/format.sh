#!/usr/bin/env bash
# Usage: tools/format.sh [--check]
#
# Brings every C++ source into the layout of .clang-format; with --check, changes nothing and
# fails when a source is not in it.

set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")"

case ${1:-} in
'') options=(-i) ;;
--check) options=(--dry-run -Werror) ;;
*) echo "format.sh: unknown argument $1" >&2 && exit 2 ;;
esac

find src host tour dataset web live cli vstgui tests bench \( -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 --no-run-if-empty clang-format "${options[@]}"
