#!/usr/bin/env bash
# Usage: tools/dataset_proof.sh FOLDER [SOUNDS]
#
# Makes a dataset of SOUNDS sounds of a second (100,000 without it) twice, by one process with all
# threads and in five parts by two processes with one thread each, and compares every file. Prints
# how long each took. FOLDER is new and needs 17 GB for 100,000; it is removed afterwards.

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
start=$SECONDS
zelvatone dataset "$folder/one" "${options[@]}"
printf 'one process with all threads: %d s\n' $((SECONDS - start))
start=$SECONDS
seq $parts | xargs -P 2 -I {} \
    zelvatone dataset "$folder/parts" "${options[@]}" --threads 1 --shard "{}/$parts"
printf '%d parts, two at a time, with one thread each: %d s\n' $parts $((SECONDS - start))
cmp <(sums_of "$folder/one") <(sums_of "$folder/parts")
printf '%d sounds, %d files: the same bytes\n' "$sounds" "$(sums_of "$folder/one" | wc -l)"
printf 'manifest.json: %s\n' "$(sha256sum <"$folder/one/manifest.json")"
rm -r "$folder"
