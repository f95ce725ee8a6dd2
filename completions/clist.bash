# bash completion for clist(1)

# Behind the compiler's name the words are the compiler's.
_clist_is_compile() {
    local at
    for ((at = 1; at < COMP_CWORD; at++)); do
        case ${COMP_WORDS[at]} in
            -o | -p | -j | --output | --project | --jobs | --function | --lines | --context | \
                --sources | --comment | --source-map | --suffix | --through | --depfile)
                [[ ${COMP_WORDS[at + 1]} == = ]] && ((at++))
                ((at++))
                ;;
            =) ((at++)) ;;
            -* | *.s | *.S | *.asm) ;;
            *) return 0 ;;
        esac
    done
    return 1
}

_clist() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options='-o --all --mangled --sources --function --lines --context --list --stats
        --classic --html --json --intel --mca --comment --source-map --color --no-warnings
        --launcher --suffix --strict -p -j --through --depfile --help --version'
    COMPREPLY=()
    # bash takes --option=value for three words.
    local is_joined=
    if [[ $current == = ]]; then
        current= is_joined=1
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]} is_joined=1
    fi
    if _clist_is_compile; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ $previous == --sources ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'own all' -- "$current")
    elif [[ $previous == --color && $is_joined ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'always never auto' -- "$current")
    elif [[ $previous == -p || $previous == --project ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    elif [[ $previous == -o || $previous == --output || $previous == --lines ||
        $previous == --depfile ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ $previous == --through ]]; then
        mapfile -t COMPREPLY < <(compgen -c -- "$current" | sort -u)
    elif [[ $previous == -j || $previous == --jobs || $previous == --function ||
        $previous == --context || $previous == --comment || $previous == --source-map ||
        $previous == --suffix ]]; then
        :
    elif [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -c -f -- "$current" | sort -u)
    fi
}
complete -F _clist clist
