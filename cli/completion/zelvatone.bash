# Bash completion for zelvatone.

# _zelvatone_words WORD...: offers those that begin with what has been typed.
_zelvatone_words() {
    mapfile -t COMPREPLY < <(compgen -W "$*" -- "${COMP_WORDS[COMP_CWORD]}")
}

# _zelvatone_files [PATTERN]: offers files whose names match, and folders.
_zelvatone_files() {
    local word=${COMP_WORDS[COMP_CWORD]}
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -X "${1:+!$1}" -- "$word"; [[ -z ${1-} ]] || compgen -d -- "$word")
}

# _zelvatone_programs: offers the programs of the plug-in, quoted as the shell needs them.
_zelvatone_programs() {
    local word=${COMP_WORDS[COMP_CWORD]//[\\\"\']/} name
    while read -r _ name; do
        if [[ ${name,,} == "${word,,}"* ]]; then
            printf -v name '%q' "$name"
            COMPREPLY+=("$name")
        fi
    done < <("${COMP_WORDS[0]}" programs 2>/dev/null | tail -n +2)
}

# _zelvatone_parameters: offers the parameters of the plug-in, with the sign that a value follows.
_zelvatone_parameters() {
    local word=${COMP_WORDS[COMP_CWORD]//[\\\"\']/} name
    compopt -o nospace 2>/dev/null
    while read -r name; do
        if [[ ${name,,} == "${word,,}"* ]]; then
            printf -v name '%q' "$name"
            COMPREPLY+=("$name=")
        fi
    done < <("${COMP_WORDS[0]}" params --json 2>/dev/null | sed -n 's/^ *"name": "\(.*\)",$/\1/p')
}

# _zelvatone_value OPTION: offers values of an option; fails for a word that takes none.
_zelvatone_value() {
    case $1 in
    -o | --output | --plugin) _zelvatone_files ;;
    --preset | --save) _zelvatone_files '*.[fF][xX][pPbB]' ;;
    --automate | --parameters) _zelvatone_files '*.[cC][sS][vV]' ;;
    --stems | --site)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "${COMP_WORDS[COMP_CWORD]}")
        ;;
    --program) _zelvatone_programs ;;
    --format) _zelvatone_words 16 24 float ;;
    --audio) _zelvatone_words wav flac ;;
    --programs)
        if [[ ${COMP_WORDS[1]} == render ]]; then
            _zelvatone_files '*.[cC][sS][vV]'
        else
            _zelvatone_words all
        fi
        ;;
    --sample | --vary) _zelvatone_words all ;;
    --tail | --threads) _zelvatone_words auto ;;
    --set) _zelvatone_parameters ;;
    --count | --seed | --notes | --velocities | --seconds | --hold | --tempo | --per-shard | --shard) ;;
    --record) _zelvatone_files '*.[wW][aA][vV]' ;;
    --keys) _zelvatone_words qwerty qwertz azerty ;;
    --play-at | --rate | --block | --buffer | --input | --cc | --gain | --normalize | --channel | --name) ;;
    --help-page) _zelvatone_words 0 1 2 3 4 5 ;;
    *) return 1 ;;
    esac
}

# _zelvatone_options COMMAND: offers its options.
_zelvatone_options() {
    local plugin="--plugin --verbose --help" sound="--preset --program --set"
    case $1 in
    render)
        _zelvatone_words --output --rate --block --format --gain --normalize --mono --dc-block --tail --threads \
            --split --together --raw --channel --programs --stems --automate --force --quiet "$sound" "$plugin"
        ;;
    play)
        _zelvatone_words --list --output --input --rate --buffer --record --cc --keys --editor "$sound" "$plugin"
        ;;
    dataset)
        _zelvatone_words --count --seed --programs --notes --velocities --vary --parameters --seconds --hold --tempo \
            --rate --audio --per-shard --shard --verify --sample --threads --quiet --verbose --help
        ;;
    tour) _zelvatone_words --output --site --play-at --threads --quiet "$plugin" ;;
    edit) _zelvatone_words --save "$sound" "$plugin" ;;
    screenshot) _zelvatone_words --output --help-page "$sound" "$plugin" ;;
    song) _zelvatone_words --json --help ;;
    programs | info) _zelvatone_words --json "$plugin" ;;
    params) _zelvatone_words --json "$sound" "$plugin" ;;
    preset) _zelvatone_words --help ;;
    save) _zelvatone_words --name "$sound" "$plugin" ;;
    load) _zelvatone_words --program --json "$plugin" ;;
    esac
}

_zelvatone() {
    local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _zelvatone_words render play song tour dataset edit screenshot programs preset params info help --help \
            --version
        return
    fi
    if ((COMP_CWORD == 2)) && [[ $command == help ]]; then
        _zelvatone_words render play song tour dataset edit screenshot programs preset params info
        return
    fi
    # The shell takes the sign in "--channel 2=Organ" for a word.
    if ((COMP_CWORD > 4)) && [[ ${COMP_WORDS[COMP_CWORD - 3]} == --channel ]]; then
        _zelvatone_programs
        return
    fi
    _zelvatone_value "${COMP_WORDS[COMP_CWORD - 1]}" && return
    if [[ $command == preset ]] && ((COMP_CWORD > 2)); then
        command=${COMP_WORDS[2]}
    fi
    if [[ $word == -* ]]; then
        _zelvatone_options "$command"
        return
    fi
    case $command in
    # .mid and .rmi
    render | play | song) _zelvatone_files '*.[mMrR][iImM][dDiI]' ;;
    preset) _zelvatone_words save load ;;
    save | load) _zelvatone_files '*.[fF][xX][pPbB]' ;;
    dataset)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
        ;;
    esac
}

complete -F _zelvatone zelvatone
