# Bash completion for zelvatone.

_zelvatone() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    local plugin="--plugin --verbose --help"
    COMPREPLY=()
    case $previous in
    -o | --output | --plugin)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    --format)
        mapfile -t COMPREPLY < <(compgen -W "16 24 float" -- "$word")
        return
        ;;
    --tail)
        mapfile -t COMPREPLY < <(compgen -W "auto" -- "$word")
        return
        ;;
    --rate | --block | --gain | --set)
        return
        ;;
    esac
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "render info params --help --version" -- "$word")
        return
    fi
    case ${COMP_WORDS[1]} in
    render)
        if [[ $word == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "--output --rate --block --format --gain --tail \
                --set --quiet $plugin" -- "$word")
        else
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -X '!*.[mM][iI][dD]' -- "$word"; compgen -d -- "$word")
        fi
        ;;
    info)
        mapfile -t COMPREPLY < <(compgen -W "--json $plugin" -- "$word")
        ;;
    params)
        mapfile -t COMPREPLY < <(compgen -W "--json --set $plugin" -- "$word")
        ;;
    esac
}

complete -F _zelvatone zelvatone
