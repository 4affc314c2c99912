# shellcheck shell=bash
# Installs the Debian packages that a command needs and that are missing; touches nothing else.

# shellcheck source=tools/say.sh
source "$(dirname "${BASH_SOURCE[0]}")/say.sh"

# packages_of GROUP...: prints the packages of these groups of tools/packages.txt, one a line.
packages_of() {
    local group
    for group in "$@"; do
        sed -n "s/^$group  *\([^ ]*\).*/\1/p" "$root/tools/packages.txt"
    done
}

is_installed() {
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# missing_of PACKAGE...: prints those that are not installed.
missing_of() {
    local package
    for package in "$@"; do
        is_installed "$package" || printf '%s\n' "$package"
    done
}

# as_root COMMAND...: sudo forgets the environment, so what apt needs of it is handed over.
as_root() {
    local settings=(DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8) name
    for name in http_proxy https_proxy no_proxy; do
        [[ -z ${!name:-} ]] || settings+=("$name=${!name}")
    done
    if (($(id -u) == 0)); then
        env "${settings[@]}" "$@"
    else
        sudo env "${settings[@]}" "$@"
    fi
}

# require_root PACKAGE...: fails, naming the packages, unless as_root will work. Asks for sudo's
# password here, before the live line could hide the question.
require_root() {
    (($(id -u) != 0)) || return 0
    command -v sudo >/dev/null ||
        fail "needs root or sudo to install packages; as root run: apt-get install $*"
    sudo -n true 2>/dev/null && return
    { : </dev/tty; } 2>/dev/null && sudo -v && return
    fail "sudo does not let you install packages; as root run: apt-get install $*"
}

apt_get() {
    as_root apt-get -y -o APT::Status-Fd=1 -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 \
        --no-install-recommends "$@"
}

# explain_apt: ends the command with the reason that apt's log shows.
explain_apt() {
    local unreachable='Temporary failure|Could not resolve|[Cc]ould not connect|Unable to connect'
    unreachable+='|Network is unreachable|Unable to locate package|has no installation candidate'
    show_failure apt-install
    if grep -qhE "$unreachable" "$log_folder"/apt-{update,install}.log 2>/dev/null; then
        fail "cannot fetch packages: is there a network, and is this Debian 12?"
    fi
    fail "apt-get failed; the whole output is in ${log_folder#"$PWD"/}/apt-install.log"
}

# repair_dpkg: puts right what an interrupted dpkg left half done; fails when nothing is half done.
repair_dpkg() {
    [[ -n $(dpkg --audit 2>/dev/null) ]] || return
    note "finishing an interrupted installation"
    logged apt-repair as_root dpkg --configure -a || true
}

# install_missing PACKAGE...: a failing update is not the end: the lists that are here may be good
# enough.
install_missing() {
    local start=$SECONDS
    require_root "$@"
    note "installing: $*"
    logged apt-update apt_get update || true
    logged apt-install apt_get install "$@" ||
        { repair_dpkg && logged apt-install apt_get install "$@"; } || explain_apt
    note "installed in $(duration $((SECONDS - start)))"
}

# require_packages GROUP...: installs what is missing of these groups. With ZELVATONE_NO_INSTALL=1
# (--no-install) it only looks.
require_packages() {
    local wanted missing
    if [[ ${ZELVATONE_NO_INSTALL:-0} == 1 ]]; then
        note "not looked at (--no-install)"
        return
    fi
    if ! { command -v apt-get && command -v dpkg-query; } >/dev/null; then
        fail "no apt-get here: install what tools/packages.txt lists, then use --no-install"
    fi
    mapfile -t wanted < <(packages_of "$@")
    mapfile -t missing < <(missing_of "${wanted[@]}")
    if ((${#missing[@]} == 0)); then
        note "all ${#wanted[@]} are here"
        return
    fi
    install_missing "${missing[@]}"
}
