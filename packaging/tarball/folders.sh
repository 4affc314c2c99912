# shellcheck shell=sh disable=SC2034 # the two scripts use the folders
# Where install.sh puts things, and how they are removed. Not a program.

# choose_folders [--system [FOLDER]]: sets bin, share, clap, lv2, vst, list, and again, the options
# that choose the same folders.
choose_folders() {
    again=
    case ${1-} in
    '')
        bin=$HOME/.local/bin share=${XDG_DATA_HOME:-$HOME/.local/share}
        clap=$HOME/.clap lv2=$HOME/.lv2 vst=$HOME/.vst
        ;;
    --system)
        prefix=${2:-/usr/local}
        case $prefix in
        /*) ;;
        *) echo "${0##*/}: $prefix does not begin with /" >&2 && exit 2 ;;
        esac
        again=" --system $prefix"
        bin=$prefix/bin share=$prefix/share
        clap=$prefix/lib/clap lv2=$prefix/lib/lv2 vst=$prefix/lib/vst
        ;;
    *)
        sed -n '2,/^[^#]/ s/^# \{0,1\}//p' "$0"
        case $1 in
        --help | -h) exit 0 ;;
        *) exit 2 ;;
        esac
        ;;
    esac
    list=$share/zelvatone/installed.txt
}

# remove_installed: the files of the list, then the folders that installing made, where empty.
remove_installed() {
    sed -n 's/^file //p' "$list" | while IFS= read -r file; do
        rm -f "$file"
    done
    remembered=$(sed -n 's/^folder //p' "$list")
    rm -f "$list"
    printf '%s\n' "$remembered" | while IFS= read -r folder; do
        [ -z "$folder" ] || rmdir "$folder" 2>/dev/null || true
    done
}
