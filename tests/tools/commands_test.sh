#!/usr/bin/env bash
# Tests what ./demo and ./check say, and where: tools/say.sh, tools/test.sh and the options.

set -euo pipefail
# shellcheck source=tests/tools/expect.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/expect.sh"

# with_tools SCRIPT: runs SCRIPT in a shell that has the functions, its logs in the sandbox.
with_tools() {
    printf '%s\n' 'set -euo pipefail' "source '$project/tools/test.sh'" \
        "log_folder='$sandbox/logs'" "$1" >"$sandbox/script.sh"
    capture bash "$sandbox/script.sh"
}

KeepsTheOutputOfAToolInItsLog() {
    with_tools 'logged tool bash -c "echo out; echo err >&2; exit 3" || echo "status $?"'
    expect_says 'status 3'
    expect_silent_about 'err'
    [[ $(tail -n 2 "$sandbox/logs/tool.log") == $'out\nerr' ]] || broken "both streams in the log"
}

# 20,000 lines of later output: more than a pipe holds, so that a reader which stops early
# would end the writer, and the command with it.
ShowsTheFirstFailedCommandOfABuild() {
    with_tools 'broken_build() { echo "[1/2] good"; echo "FAILED: second.o"; seq 20000; return 1; }
        logged_or_fail tool Building broken_build'
    expect_status 1
    expect_says '| FAILED: second.o'
    expect_silent_about 'good'
    expect_says 'Building failed; the whole output is in'
    (($(wc -l <<<"$output") < 100)) || broken "a short excerpt"
}

DrawsNoLiveLineIntoAPipe() {
    with_tools 'logged tool echo "[1/2] half way"; echo end'
    [[ $output == end ]] || broken "nothing but the end"
}

DrawsTheLiveLineOnATerminal() {
    with_tools 'logged tool echo "[1/2] half way"; echo end'
    capture env TERM=xterm script -qec "bash '$sandbox/script.sh'" /dev/null
    expect_says $'\r\e[K      [1/2] half way\r\e[K'
}

RefusesAnUnknownOptionWithStatus2() {
    local command
    for command in demo check; do
        capture "$project/$command" --nonsense
        expect_status 2
        [[ $output == "$command: unknown "*" --nonsense (see $command --help)" ]] || broken "one line"
    done
}

# CTest calls skipped tests passed and leaves disabled ones out of its total; people do not.
CountsPassedFailedAndSkippedTests() {
    # shellcheck disable=SC2016 # the inner shell expands it
    with_tools 'mkdir -p "$log_folder"; cat >"$log_folder/tests-release.log" <<END
1/5 Test #1: Sum.IsRight .......   Passed    0.00 sec
2/5 Test #2: Sum.IsSlow ........***Skipped   0.00 sec
3/5 Test #3: Sum.IsWrong .......***Failed    0.00 sec
1 is not 2
4/5 Test #4: Sum.IsAway ........***Not Run (Disabled)   0.00 sec
5/5 Test #5: Sum.IsFine ........   Passed    0.00 sec
75% tests passed, 1 tests failed out of 4

The following tests FAILED:
	  3 - Sum.IsWrong (Failed)
Errors while running CTest
END
        sum_up release 61 no'
    expect_says '5 tests: 2 passed, 1 failed, 2 skipped, in 1 min 1 s'
    expect_says '| 1 is not 2'
    expect_says '3 - Sum.IsWrong (Failed)'
    expect_silent_about 'Sum.IsFine'
}

# A stand-in for a fuzzer that stops at its first input.
NamesTheInputThatAFuzzerFound() {
    # shellcheck disable=SC2016 # the inner shell expands it
    with_tools "source '$project/tools/fuzz.sh'; log_folder='$sandbox/logs'"'
        fuzz_build=$log_folder/fuzz fuzzers=(midi) CMAKE_BUILD_PARALLEL_LEVEL=2
        mkdir -p "$fuzz_build/fuzzers"
        printf "%s\n" "#!/bin/bash" "echo broken promise: times are sorted" \
            "echo Test unit written to $fuzz_build/found/midi-crash-1; exit 77" \
            >"$fuzz_build/fuzzers/fuzz_midi"
        chmod +x "$fuzz_build/fuzzers/fuzz_midi"
        run_fuzzers 1 || echo "status $?"'
    expect_says '| broken promise: times are sorted'
    expect_says 'fuzz_midi found '"$sandbox/logs/fuzz/found/midi-crash-1"
    expect_says 'make a test:   give the bytes that'
    expect_says 'status 1'
}

# configured_with CACHE_LINE...: what is given to cmake for a build folder with these lines in its
# cache, beside a compiler that is there.
configured_with() {
    local tree=$sandbox/tree
    mkdir -p "$tree/build/release" "$sandbox/bin"
    printf '%s\n' '#!/bin/bash' 'echo "cmake $*"' >"$sandbox/bin/cmake"
    chmod +x "$sandbox/bin/cmake"
    printf '%s\n' "$@" >"$tree/build/release/CMakeCache.txt"
    # shellcheck disable=SC2016 # the inner shell expands it
    with_tools "PATH=$sandbox/bin:\$PATH; source '$project/tools/build.sh'; root='$tree'"'
        configure release -DA=B; tail -n 1 "$log_folder/configure-release.log"'
    output=${output//$tree/TREE}
}

KeepsABuildFolderThatWasConfiguredHere() {
    local tree=$sandbox/tree
    configured_with "CMAKE_HOME_DIRECTORY:INTERNAL=$tree" CMAKE_CXX_COMPILER:FILEPATH=/bin/true \
        "CMAKE_CACHEFILE_DIR:INTERNAL=$tree/build/release" CMAKE_GENERATOR:INTERNAL=Ninja
    [[ $output == 'cmake --preset release -S TREE -DA=B' ]] || broken "no --fresh"
}

StartsABuildFolderFromElsewhereAfresh() {
    local tree=$sandbox/tree home place generator compiler
    home=CMAKE_HOME_DIRECTORY:INTERNAL=$tree
    place=CMAKE_CACHEFILE_DIR:INTERNAL=$tree/build/release
    generator=CMAKE_GENERATOR:INTERNAL=Ninja
    compiler=CMAKE_CXX_COMPILER:FILEPATH=/bin/true
    for lines in "${home}2 $place $generator $compiler" "$home ${place}2 $generator $compiler" \
        "$home $place ${generator}2 $compiler" "$home $place $generator ${compiler}-away"; do
        # shellcheck disable=SC2086 # the words are lines
        configured_with $lines
        [[ $output == 'cmake --fresh --preset release -S TREE -DA=B' ]] || broken "--fresh: $lines"
    done
}

FuzzesForANumberOfSecondsOnly() {
    local seconds
    for seconds in '' 0 x -1; do
        capture "$project/check" --fuzz $seconds
        expect_status 2
        expect_says '--fuzz takes a number of seconds'
    done
}

run_rule "$@"
