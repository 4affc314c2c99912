# shellcheck shell=bash
# Runs the fuzzers of the preset `fuzz`: each changes the seeds of tests/fuzz at random for some
# time and keeps those that reach new code.

# shellcheck source=tools/say.sh
source "$(dirname "${BASH_SOURCE[0]}")/say.sh"

fuzz_build=$root/build/fuzz
fuzzers=(automation midi names options preset)

# fuzz_one NAME SECONDS: what reached new code lies in build/fuzz/corpus and is where the next run
# begins. Readers take microseconds for a file this short: ten seconds or a gigabyte is a defect.
fuzz_one() {
    local corpus=$fuzz_build/corpus/$1 seeds=() folder
    for folder in "$root/tests/fuzz/seeds/$1" "$fuzz_build/seeds/$1"; do
        [[ ! -d $folder ]] || seeds+=("$folder")
    done
    mkdir -p "$corpus" "$fuzz_build/found"
    "$fuzz_build/fuzzers/fuzz_$1" -max_total_time="$2" -max_len=1024 -timeout=10 \
        -rss_limit_mb=1024 -print_final_stats=1 -verbosity=1 \
        -dict="$root/tests/fuzz/dictionaries/$1.dict" \
        -artifact_prefix="$fuzz_build/found/$1-" "$corpus" "${seeds[@]}" \
        >"$log_folder/fuzz-$1.log" 2>&1
}

# tell_found NAME: which input it was, and what to do with it.
tell_found() {
    local log=$log_folder/fuzz-$1.log input
    input=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
    say
    grep -m 3 -E 'ERROR: |runtime error: |broken promise: ' "$log" | sed 's/^/      | /'
    if [[ -z $input ]]; then
        say "fuzz_$1 failed; its output is in build/logs/fuzz-$1.log"
        return
    fi
    input=${input#"$root"/}
    say "fuzz_$1 found $input; its output is in build/logs/fuzz-$1.log"
    say "  see it again:  build/fuzz/fuzzers/fuzz_$1 $input"
    say "  make it small: build/fuzz/fuzzers/fuzz_$1 -minimize_crash=1 -runs=100000 $input"
    say "  make a test:   give the bytes that 'od -An -v -tx1 $input' prints to a test of the"
    say "                 reader in tests/host or tests/cli, and name it for the broken rule"
}

# tell_result NAME: how much was tried.
tell_result() {
    local log=$log_folder/fuzz-$1.log inputs
    inputs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    note "$(printf '%-11s %10s inputs, %5s kept' "$1" "$inputs" \
        "$(find "$fuzz_build/corpus/$1" -type f | wc -l)")"
}

# run_fuzzers SECONDS: as many at a time as there are jobs; fails when one finds something.
run_fuzzers() {
    local name running=() status=0
    mkdir -p "$log_folder"
    "$root/tests/fuzz/make_seeds.py" "$fuzz_build/seeds"
    for name in "${fuzzers[@]}"; do
        fuzz_one "$name" "$1" &
        running+=("$name:$!")
        if ((${#running[@]} >= CMAKE_BUILD_PARALLEL_LEVEL)); then
            await_fuzzer "${running[0]}" || status=1
            running=("${running[@]:1}")
        fi
    done
    for name in "${running[@]}"; do
        await_fuzzer "$name" || status=1
    done
    return "$status"
}

# await_fuzzer NAME:PROCESS
await_fuzzer() {
    if wait "${1#*:}"; then
        tell_result "${1%%:*}"
    else
        tell_found "${1%%:*}"
        return 1
    fi
}
