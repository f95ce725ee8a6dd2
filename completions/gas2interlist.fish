complete -c gas2interlist -s o -r -d 'Write to a file'
complete -c gas2interlist -l source-map -x -d 'OLD=NEW: replace the beginning of source names'
complete -c gas2interlist -l help -d 'Print the usage text'
complete -c gas2interlist -l version -d 'Print the version'
