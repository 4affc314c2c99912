# shellcheck shell=bash
# What the tests of the shell functions share. A test script defines one function a rule, sources
# this file and ends with: run_rule "$@"

# shellcheck disable=SC2034 # the test scripts use it
project=$(dirname "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")")
sandbox=$(mktemp -d)
trap 'rm -rf "$sandbox"' EXIT

# capture COMMAND...: runs it; leaves its output (both streams) in $output, its status in $status.
capture() {
    status=0
    output=$("$@" 2>&1) || status=$?
}

broken() {
    printf 'Expected %s\nStatus:  %s\nOutput:\n%s\n' "$1" "${status:-}" "${output:-}" >&2
    exit 1
}

expect_status() {
    [[ $status == "$1" ]] || broken "status $1"
}

# expect_says TEXT, expect_silent_about TEXT: TEXT is, is not, part of $output.
expect_says() {
    [[ $output == *"$1"* ]] || broken "the output to contain: $1"
}

expect_silent_about() {
    [[ $output != *"$1"* ]] || broken "the output not to contain: $1"
}

run_rule() {
    [[ $(type -t "${1:-}") == function ]] || broken "the name of a rule"
    "$1"
}
