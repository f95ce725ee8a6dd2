# bash completion for gas2interlist(1)

_gas2interlist() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W '-o --source-map --no-warnings --help --version' -- "$current"))
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _gas2interlist gas2interlist
