# shellcheck shell=bash
# Runs the tests of one preset through CTest and sums up.

# shellcheck source=tools/say.sh
source "$(dirname "${BASH_SOURCE[0]}")/say.sh"

# A sanitizer's first finding ends the test; leaks count. tests/lsan.supp names what is kept on
# purpose.
use_sanitizer_options() {
    local leaks=$root/tests/lsan.supp
    export ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    if [[ -f $leaks ]]; then
        export LSAN_OPTIONS=suppressions=$leaks:print_suppressions=0
    fi
}

# A command that CTest runs in, for programs that need more than this system.
test_session=()

# run_tests PRESET [CTEST ARGUMENT...]: runs the tests, prints the summary, fails unless all passed.
run_tests() {
    local preset=$1 passed=yes start=$SECONDS
    shift
    pushd "$root" >/dev/null || return
    logged "tests-$preset" "${test_session[@]}" ctest --preset "$preset" "$@" || passed=no
    popd >/dev/null || return
    sum_up "$preset" $((SECONDS - start)) "$passed"
    [[ $passed == yes ]]
}

# sum_up PRESET SECONDS PASSED(yes/no): counts, time, and what failed.
sum_up() {
    local log=$log_folder/tests-$1.log total failed skipped disabled
    total=$(sed -n 's/.* tests failed out of \([0-9]*\)$/\1/p' "$log")
    failed=$(sed -n 's/.* \([0-9]*\) tests failed out of .*/\1/p' "$log")
    skipped=$(grep -c '\*\*\*Skipped' "$log") || true
    disabled=$(grep -c '\*\*\*Not Run (Disabled)' "$log") || true
    if [[ -z $total ]]; then
        show_failure "tests-$1"
        say "No test ran; the whole output is in build/logs/tests-$1.log"
        return
    fi
    # CTest leaves disabled tests out of its own total.
    total=$((total + disabled)) skipped=$((skipped + disabled))
    ((failed == 0)) || show_failed_tests "$1"
    say
    say "$total tests: $((total - failed - skipped)) passed, $failed failed, $skipped skipped," \
        "in $(duration "$2")"
    [[ $3 == yes ]] || say "The whole output is in build/logs/tests-$1.log"
}

# show_failed_tests PRESET: the output of the failed tests (cut when there is much of it), CTest's
# closing list, and how to run them again.
show_failed_tests() {
    local log=$log_folder/tests-$1.log
    say
    awk -v most=150 '/\*\*\*(Failed|Timeout|Exception|Not Run$)/ { show = 1 }
         /^ *[0-9]+\/[0-9]+ Test .*( Passed |\*\*\*Skipped|\(Disabled\))/ { show = 0 }
         /^ *Start +[0-9]+:/ || /^[0-9]+% tests passed/ { show = 0 }
         show && lines++ < most' "$log" | sed 's/^/      | /'
    say
    sed -n '/^The following tests FAILED:/,/^Errors while/ { /^Errors while/d; p }' "$log"
    say "Run them again: ctest --preset $1 --rerun-failed"
}
