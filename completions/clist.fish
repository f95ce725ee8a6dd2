set -l valued -o --output -p --project -j --jobs --function --lines --context --sources --comment \
    --source-map --suffix --through --depfile
# Behind the compiler's name the words are the compiler's.
function __clist_takes_options --inherit-variable valued
    set -l words (commandline -poc)
    set -e words[1]
    while set -q words[1]
        if contains -- $words[1] $valued
            set -e words[1]
        else if not string match -qr -- '^-|\.(s|S|asm)$' $words[1]
            return 1
        end
        set -e words[1]
    end
    return 0
end

complete -c clist -a "(__fish_complete_subcommand -- $valued)"

complete -c clist -n __clist_takes_options -s o -l output -r -d 'Write to a file'
complete -c clist -n __clist_takes_options -l all -d 'Keep every line of the assembly'
complete -c clist -n __clist_takes_options -l mangled -d 'Leave symbols as they are'
complete -c clist -n __clist_takes_options -l sources -x -a 'own all' -d 'Show code of libraries, or as own lines'
complete -c clist -n __clist_takes_options -l function -x -d 'GLOB or NUMBER: only these functions'
complete -c clist -n __clist_takes_options -l lines -r -d 'FILE:FROM-TO: only the code of these lines'
complete -c clist -n __clist_takes_options -l context -x -d 'Also what they call, to this depth'
complete -c clist -n __clist_takes_options -l list -d 'Number the functions'
complete -c clist -n __clist_takes_options -l stats -d 'A table of the functions'
complete -c clist -n __clist_takes_options -l classic -d 'The listing of interlist'
complete -c clist -n __clist_takes_options -l html -d 'A page with sources and code'
complete -c clist -n __clist_takes_options -l json -d 'An object for each instruction'
complete -c clist -n __clist_takes_options -l intel -d 'Compile to the syntax of Intel'
complete -c clist -n __clist_takes_options -l mca -d 'What llvm-mca expects of each function'
complete -c clist -n __clist_takes_options -l comment -x -d 'What starts a comment'
complete -c clist -n __clist_takes_options -l source-map -x -d 'OLD=NEW: replace the beginning of source names'
complete -c clist -n __clist_takes_options -l color -f -a 'always never auto' -d 'Colour the listing'
complete -c clist -n __clist_takes_options -l no-warnings -d 'Do not tell of missing sources and the like'
complete -c clist -n __clist_takes_options -l launcher -d 'Compile, and leave a listing beside the object'
complete -c clist -n __clist_takes_options -l suffix -x -d 'What the name of the listing ends in'
complete -c clist -n __clist_takes_options -l strict -d 'A listing that fails is an error'
complete -c clist -n __clist_takes_options -s p -l project -r -d 'List what a build compiles'
complete -c clist -n __clist_takes_options -s j -l jobs -x -d 'So many at once'
complete -c clist -n __clist_takes_options -l through -x -d 'Run compiles by a command'
complete -c clist -n __clist_takes_options -l depfile -r -d 'Tell make what the listing depends on'
complete -c clist -n __clist_takes_options -s h -l help -d 'Print the usage text'
complete -c clist -n __clist_takes_options -s V -l version -d 'Print the version'
