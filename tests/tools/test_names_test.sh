#!/usr/bin/env bash
# Tests that the name of each test is a sentence: its subject is the suite's name or stands in the
# test's own name, which therefore does not begin with a preposition.

set -euo pipefail
# shellcheck source=tests/tools/expect.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/expect.sh"

# names_in FOLDER: Suite.Test, one a line.
names_in() {
    grep -rhoE --include='*.cpp' '^(TYPED_)?TEST(_[FP])?\([A-Za-z0-9_]+, *[A-Za-z0-9_]+' "$1" |
        sed -E 's/^[A-Z_]+\(//; s/, */./'
}

BeginWithNoPreposition() {
    local words='About|Above|After|Along|As|At|Before|Behind|Below|Beside|Between|Beyond|By|During'
    words+='|For|From|If|In|Inside|Into|Like|Of|On|Outside|Over|That|Through|To|Towards|Under'
    words+='|Until|When|Where|Which|While|With|Within|Without'
    output=$(names_in "$project/tests" | grep -E "\.($words)([A-Z0-9]|$)") || return 0
    broken "no test whose name begins with a preposition"
}

AreFound() {
    (($(names_in "$project/tests" | wc -l) > 1000)) || broken "more than a thousand tests"
}

run_rule "$@"
