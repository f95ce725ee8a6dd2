# bash completion for symdecode(1)

_symdecode() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # bash takes the "=" of --scheme=1 as a word of its own.
    if [[ $current == = ]]; then
        current=''
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $previous in
        --style)
            COMPREPLY=($(compgen -W 'house gnu' -- "$current"))
            ;;
        -s | --scheme)
            COMPREPLY=($(compgen -W '0 1 auto' -- "$current"))
            ;;
        *)
            COMPREPLY=($(compgen -W '-s --scheme --style -p --names-only -_ --strip-underscore
                -x --extended -e --strict -l --lines -j --json -h --help -V --version' \
                -- "$current"))
            ;;
    esac
}
complete -F _symdecode symdecode
