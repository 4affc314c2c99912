#!/usr/bin/env bash
# Usage: kernel_objects_test.sh OBJECT...
#
# Of these object files, tests those of the kernels: each may define one symbol for the rest of
# the program, its table of functions, and ask the rest for nothing but fmod and what compilers
# call by themselves. clang's sanitizer adds descriptions of function types, and g++'s the address of
# what unwinds the stack: data, and as good for any processor.

set -euo pipefail
export LC_ALL=C

# unexpected_symbols OBJECT: its symbols that are neither local nor allowed.
unexpected_symbols() {
    nm --demangle --format=posix "$1" |
        grep -vE '^zelvatone::k(Sse2|Avx2|Avx512)Kernel [DR] |^__odr_asan\.' |
        grep -vE '^DW\.ref\.__gxx_personality_v0 V |^__gxx_personality_v0 U' |
        grep -vE '^typeinfo (name )?for .* V |^vtable for __cxxabiv1::' |
        grep -vE '^(fmod|mem(cpy|set|move)|_GLOBAL_OFFSET_TABLE_|__(asan|ubsan|stack_chk)_.*) U' |
        grep -E ' [A-TV-Zu-wU] ' || true
}

checked=0
for object in "$@"; do
    [[ $object == *fast/kernel/Kernel* ]] || continue
    symbols=$(unexpected_symbols "$object")
    if [[ -n $symbols ]]; then
        printf '%s shares with the rest of the program:\n%s\n' "${object##*/}" "$symbols"
        exit 1
    fi
    checked=$((checked + 1))
done
if ((checked != 3)); then
    echo "found $checked kernels instead of 3"
    exit 1
fi
