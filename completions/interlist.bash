# bash completion for interlist(1)

_interlist() {
    local current=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W '-b -p -q -w --help --no_warnings --toolversion' -- "$current"))
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _interlist interlist
