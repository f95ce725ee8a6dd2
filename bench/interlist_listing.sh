#!/usr/bin/env bash
# Measures the interlister on a large real program, as ratios against two peers
# in the same run: cat copying the same assembly file, and objdump -dS, the
# platform's own way to see C among the instructions, on the same object. Then
# on made-up functions in source order and in reverse order.
#
#   bench/interlist_listing.sh [BUILD]     BUILD is build/bench if not given
#
# The program is the C file that an npm package ships; it is fetched into CACHE
# (a folder below the user's cache if not set) the first time.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=$(realpath "${1:-build/bench}")
cache=${CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/interlist-bench}
package=better-sqlite3@11.5.0
runs=${RUNS:-15}

mkdir -p "$cache"
cd "$cache"
if [ ! -f sqlite3.c ]; then
  npm pack --silent "$package" >/dev/null
  tar -xzf better-sqlite3-*.tgz --strip-components=3 package/deps/sqlite3/sqlite3.c
  rm -f better-sqlite3-*.tgz
fi
[ -f sqlite3.s ] || gcc -S -g -O1 sqlite3.c -o sqlite3.s
[ -f sqlite3.o ] || gcc -c sqlite3.s -o sqlite3.o
"$build/bin/gas2interlist" sqlite3.s -o sqlite3.asm

# The best time of so many runs, in microseconds.
best() {
  local least='' started took
  for ((i = 0; i < $1; ++i)); do
    started=${EPOCHREALTIME/./}
    "${@:2}" >output
    took=$((${EPOCHREALTIME/./} - started))
    if [ -z "$least" ] || [ "$took" -lt "$least" ]; then least=$took; fi
  done
  echo "$least"
}

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
show() { printf '%-44s %9.1f ms\n' "$1" "$(awk -v t="$2" 'BEGIN { print t / 1000 }')"; }
interlist() { "$build/bin/interlist" "$@"; }

listing=$(best "$runs" interlist sqlite3.asm sqlite3.cl)
copy=$(best "$runs" cat sqlite3.asm)
through=$(best "$runs" bash -c 'cat sqlite3.asm | cat')
disassembly=$(best 1 objdump -dS sqlite3.o)
printf '%s lines of C, %s lines of assembly, %s bytes; listing %s bytes\n' \
  "$(wc -l <sqlite3.c)" "$(wc -l <sqlite3.asm)" "$(wc -c <sqlite3.asm)" "$(wc -c <sqlite3.cl)"
show interlist "$listing"
show 'cat' "$copy"
show 'cat | cat, whose bytes pass through a process' "$through"
show 'objdump -dS' "$disassembly"
printf 'interlist : cat          %s\n' "$(ratio "$listing" "$copy")"
printf 'interlist : cat | cat    %s\n' "$(ratio "$listing" "$through")"
printf 'objdump -dS : interlist  %s\n' "$(ratio "$disassembly" "$listing")"

# 5,000 functions of 50 lines.
awk 'BEGIN { for (i = 1; i <= 250000; ++i) print "    line_of_source(" i ", \"about as long as code is\");" }' >made.c
made() {
  printf '\t.ifile\t"made.c"\n'
  seq "$@" | awk '{
    first = 50 * $1 + 1
    print "\t.ifunc\t" first
    for (j = 1; j < 50; j += 4) {
      print "\t.iline\t" j
      for (k = 0; k < 8; ++k) print "\tmovl\t%eax, %ebx"
    }
    print "\t.iendfunc\t" first + 50
  }'
}
made 0 4999 >forward.asm
made 4999 -1 0 >reverse.asm
forward=$(best "$runs" interlist forward.asm forward.cl)
reverse=$(best "$runs" interlist reverse.asm reverse.cl)
show '5,000 functions in source order' "$forward"
show '5,000 functions in reverse order' "$reverse"
printf 'reverse : source order   %s\n' "$(ratio "$reverse" "$forward")"
