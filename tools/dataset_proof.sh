#!/usr/bin/env bash
# Usage: tools/dataset_proof.sh FOLDER [SOUNDS]
#
# Makes a dataset of SOUNDS sounds of a second (100,000 without it) twice, by one process with all
# threads and in five parts by two processes with one thread each, and compares every file. Prints
# the processor time of each. FOLDER is new and needs 17 GB for 100,000; it is removed afterwards.

set -euo pipefail
export LC_ALL=C.UTF-8
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
export PATH=$root/build/release/bin:$PATH
folder=$1 sounds=${2:-100000} parts=5
options=(--count "$sounds" --seed 1 --vary all --audio flac --per-shard $(((sounds + 11) / 12)) -q)

# sums_of FOLDER: every file with its checksum.
sums_of() {
    (cd "$1" && find . -type f -print0 | sort -z | xargs -0 sha256sum)
}

mkdir "$folder"
TIMEFORMAT='one process with all threads: %U s of processor time in the program, %S s in the system'
time zelvatone dataset "$folder/one" "${options[@]}"
TIMEFORMAT="$parts parts, two at a time, with one thread each: %U s and %S s"
time seq $parts | xargs -P 2 -I {} \
    zelvatone dataset "$folder/parts" "${options[@]}" --threads 1 --shard "{}/$parts"
cmp <(sums_of "$folder/one") <(sums_of "$folder/parts")
printf '%d sounds, %d files: the same bytes\n' "$sounds" "$(sums_of "$folder/one" | wc -l)"
printf 'manifest.json: %s\n' "$(sha256sum <"$folder/one/manifest.json")"
rm -r "$folder"
