#!/usr/bin/env bash
# Usage: threaded_tests_test.sh TESTS LIST
#
# Looks for sources in the folder TESTS that start threads, or a program with several of them, and
# that LIST, a path a line, does not name. Their programs want THREADS in zelvatone_add_tests.

set -euo pipefail
export LC_ALL=C.UTF-8
tests=$1 list=$2
status=0

while IFS= read -r source; do
    grep -qxF "$(readlink -f "$source")" <(xargs -d '\n' readlink -f <"$list") && continue
    printf '%s has threads, and no program of the thread sanitizer has it\n' "$source"
    status=1
done < <(grep -rlE --include='*.cpp' --exclude-dir=windows \
    'std::(jthread|thread|async)\b|pthread_create|"--threads"' "$tests")
exit $status
