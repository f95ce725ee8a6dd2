# complete.zsh <folder of completions> <program> <word>
# Types the program's name and the word in an interactive zsh, presses Tab and Return,
# and prints what the program is then called with, as "got:...".
zmodload zsh/zpty
zpty shell 'PS1= zsh -f -i'

send() { zpty -w -n shell "$1" }
await() {
  local text
  while zpty -r shell text; do
    print -r -- "$text"
    [[ $text == *$1* ]] && return
  done
}

# The texts waited for are written in two pieces, so that their echo is not taken for them.
send "fpath=(${(q)1} \$fpath); autoload -U compinit; compinit -D -u; $2() { print -r -- got'':\$1. }; print -r -- rea''dy"$'\n'
await ready
send "$2 $3"$'\t\n'
await got:
zpty -d shell
