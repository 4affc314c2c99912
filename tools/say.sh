# shellcheck shell=bash
# What a command tells its user: numbered steps, one live progress line on a terminal, one-line
# failures. Everything a tool prints goes into a log file; its tail is shown when the tool fails.

root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")") # the project's top folder
log_folder=$root/build/logs
step_number=0
step_count=0

trap 'live_end; say "${0##*/}: interrupted"; exit 130' INT

# on_terminal: is standard output watched by a person?
on_terminal() {
    [[ -t 1 && ${TERM:-dumb} != dumb ]]
}

say() {
    printf '%s\n' "$*"
}

# plan COUNT: says how many steps follow.
plan() {
    step_count=$1
    step_number=0
}

step() {
    step_number=$((step_number + 1))
    printf '[%d/%d] %s\n' "$step_number" "$step_count" "$*"
}

# note TEXT: a remark that belongs to the current step.
note() {
    printf '      %s\n' "$*"
}

# fail TEXT: ends the command with one clear line.
fail() {
    live_end
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# usage_error TEXT: ends the command because it was called in a way it does not know.
usage_error() {
    printf '%s: %s (see %s --help)\n' "${0##*/}" "$*" "${0##*/}" >&2
    exit 2
}

# help_from_head FILE: prints the comment that FILE opens with, below its first line.
help_from_head() {
    sed -n '2,/^[^#]/ { s/^# \{0,1\}//p }' "$1"
}

# live TEXT: replaces the live progress line; nothing when standard output is not a terminal.
live() {
    on_terminal || return 0
    local width=$((${COLUMNS:-80} - 7))
    printf '\r\e[K      %s' "${1:0:width}"
}

live_end() {
    on_terminal || return 0
    printf '\r\e[K'
}

# duration SECONDS: prints it as people say it.
duration() {
    if (($1 >= 60)); then
        printf '%d min %d s' $(($1 / 60)) $(($1 % 60))
    else
        printf '%d s' "$1"
    fi
}

# follow LOG: copies standard input to LOG; lines that count work done become the live line:
# ninja's "[12/80] ...", ctest's " 12/80 Test ...", apt's "pmstatus:package:percent:what".
follow() {
    local line ninja='^\[[0-9]+/[0-9]+\] ' ctest='^ *[0-9]+/[0-9]+ Test ' apt='^(dl|pm)status:'
    while IFS= read -r line || [[ -n $line ]]; do
        if [[ $line =~ $apt ]]; then
            IFS=: read -r _ _ percent what <<<"$line"
            live "${percent%%.*} %  $what"
            continue
        fi
        printf '%s\n' "$line" >&3
        if [[ $line =~ $ninja || $line =~ $ctest ]]; then
            live "$line"
        fi
    done 3>>"$1"
}

# logged NAME COMMAND...: runs COMMAND with its output in build/logs/NAME.log and shows its
# progress. Returns COMMAND's status; says nothing about it.
logged() {
    local log=$log_folder/$1.log status=0
    shift
    if ! { mkdir -p "$log_folder" && : >"$log"; } 2>/dev/null; then
        fail "cannot write $log: it belongs to another user, or the disk is full"
    fi
    if on_terminal; then
        COLUMNS=$(tput cols 2>/dev/null || echo 80)
    fi
    printf '$ %s\n' "$*" >>"$log"
    "$@" </dev/null 2>&1 | follow "$log" || status=${PIPESTATUS[0]}
    live_end
    return "$status"
}

# show_failure NAME: the part of build/logs/NAME.log that tells what went wrong: from the first
# failed command of a build on, else the end.
show_failure() {
    local log=$log_folder/$1.log
    {
        if grep -q '^FAILED: ' "$log"; then
            awk '/^FAILED: / { show = 1 } show && lines++ < 60' "$log"
        else
            tail -n 40 "$log"
        fi
    } | sed 's/^/      | /' >&2
}

# logged_or_fail NAME WHAT COMMAND...: like `logged`; when COMMAND fails, so does the whole command.
logged_or_fail() {
    local name=$1 what=$2
    shift 2
    logged "$name" "$@" && return
    show_failure "$name"
    fail "$what failed; the whole output is in ${log_folder#"$PWD"/}/$name.log"
}
