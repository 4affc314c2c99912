#!/usr/bin/env bash
# Tests tools/packages.sh in a world of its own: the search path holds a few harmless tools and
# stand-ins for apt-get, dpkg-query, id and sudo that write down how they were called.

set -euo pipefail
# shellcheck source=tests/tools/expect.sh
source "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/expect.sh"

bin=$sandbox/bin
calls=$sandbox/calls

# stand_in NAME SCRIPT: NAME writes down its arguments, then does SCRIPT.
stand_in() {
    printf '#!%s\nprintf "%%s\\n" "%s $*" >>"%s"\n%s\n' \
        "$(command -v bash)" "$1" "$calls" "$2" >"$bin/$1"
    chmod +x "$bin/$1"
}

# make_world USER_ID ABSENT...: a machine where every package but ABSENT is installed.
make_world() {
    local user=$1 tool
    shift
    mkdir -p "$bin"
    : >"$calls"
    for tool in awk bash cat dirname env grep mkdir readlink sed tail; do
        ln -s "$(command -v $tool)" "$bin/$tool"
    done
    stand_in dpkg ''
    stand_in apt-get ''
    stand_in dpkg-query "case \" $* \" in *\" \${@: -1} \"*) exit 1 ;; *) echo -n installed ;; esac"
    stand_in id "echo $user"
}

require() {
    # shellcheck disable=SC2016 # the inner shell expands these
    capture env PATH="$bin" ZELVATONE_NO_INSTALL="${no_install:-0}" bash -c '
        set -euo pipefail
        source "$1/tools/packages.sh"
        log_folder=$2
        require_packages build' check "$project" "$sandbox/logs"
}

# expect_called PATTERN, expect_not_called PATTERN: a line of $calls matches the extended regex.
expect_called() {
    grep -qE "$1" "$calls" || broken "a call like \"$1\" among: $(cat "$calls")"
}

expect_not_called() {
    ! grep -qE "$1" "$calls" || broken "no call like \"$1\" among: $(cat "$calls")"
}

LeavesInstalledPackagesAlone() {
    make_world 0
    require
    expect_status 0
    expect_not_called '^(apt-get|dpkg|sudo) '
}

InstallsOnlyWhatIsMissing() {
    make_world 0 cmake ninja-build
    require
    expect_status 0
    expect_called '^apt-get .*--no-install-recommends install cmake ninja-build$'
}

UpdatesTheListsBeforeItInstalls() {
    make_world 0 cmake
    require
    [[ $(grep -oE '^apt-get .*(update|install [a-z]+)$' "$calls" | grep -oE '(update|install cmake)$') == \
        $'update\ninstall cmake' ]] || broken "update, then install"
}

AsksSudoWhenNotRoot() {
    make_world 1000 cmake
    # shellcheck disable=SC2016 # the stand-in expands it
    stand_in sudo '[ "$1" = -n ] || "$@"'
    require
    expect_status 0
    expect_called '^sudo env .*DEBIAN_FRONTEND=noninteractive .*apt-get .*install cmake$'
    expect_called '^apt-get .*install cmake$'
}

NamesThePackagesWhenItMayNotInstall() {
    make_world 1000 cmake g++
    require
    expect_status 1
    [[ $output == 'check: needs root or sudo to install packages; as root run: apt-get install cmake g++' ]] ||
        broken "one line that names the packages"
    expect_not_called '^apt-get '
}

SaysThatTheNetworkIsMissing() {
    make_world 0 cmake
    stand_in apt-get "echo \"Err: Temporary failure resolving 'example.org'\"; exit 100"
    require
    expect_status 1
    expect_says 'check: cannot fetch packages: is there a network'
}

# The package manager refuses everything until what a killed run left behind is put right.
FinishesAnInterruptedInstallation() {
    make_world 0 cmake
    stand_in dpkg "case \$1 in --audit) echo half done ;; *) echo whole >'$sandbox/state' ;; esac"
    stand_in apt-get "[[ \$* != *install* || -f '$sandbox/state' ]]"
    require
    expect_status 0
    expect_called '^dpkg --configure -a$'
}

SaysThatAptIsMissing() {
    make_world 0 cmake
    rm "$bin/apt-get"
    require
    expect_status 1
    expect_says 'check: no apt-get here'
}

LooksAtNothingWithNoInstall() {
    make_world 0 cmake
    no_install=1
    require
    expect_status 0
    expect_not_called '.'
}

run_rule "$@"
