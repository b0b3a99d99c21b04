# Completion of kavit-solve for bash. The options are taken from --help, so that they are never old.
_kavit_solve() {
    local cur prev words cword split
    _init_completion -s || return
    case $prev in
        --search)
            COMPREPLY=($(compgen -W 'both forward backward' -- "$cur"))
            return ;;
        --opt-level)
            COMPREPLY=($(compgen -W '0 1 2 3 4' -- "$cur"))
            return ;;
        --hash)
            COMPREPLY=($(compgen -W 'default case1 case2 mixed' -- "$cur"))
            return ;;
        --sol | --output | --dump-levels)
            _filedir
            return ;;
        --max-positions | --memory | --blocks | --max-time | --threads | --level | --title | --dump-position)
            return ;;
    esac
    $split && return
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '$(_parse_help "$1")' -- "$cur"))
        [[ ${COMPREPLY-} == *= ]] && compopt -o nospace
        return
    fi
    _filedir '@(xsb|sok|txt)'
} && complete -F _kavit_solve kavit-solve
