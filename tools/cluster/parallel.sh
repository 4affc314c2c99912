#!/usr/bin/env bash
# Usage: [JOBS=N] [HOSTS=host1,host2] tools/cluster/parallel.sh PARTS FOLDER OPTION...
#
# Makes a dataset in PARTS parts with GNU parallel, JOBS at a time on each machine (1 without it, for
# each takes all processors): here, or over ssh on HOSTS, where ":" is this machine. FOLDER and the
# options are those of `zelvatone dataset`, without --shard. All machines see FOLDER under the same
# name and have `zelvatone` in their PATH. After a failure run the same again.

set -euo pipefail
parts=$1
shift
on=()
[[ -z ${HOSTS:-} ]] || on=(--sshlogin "$HOSTS" --workdir .)
seq "$parts" | parallel --quote --jobs "${JOBS:-1}" --retries 3 "${on[@]}" \
    zelvatone dataset "$@" --quiet --shard "{}/$parts"
