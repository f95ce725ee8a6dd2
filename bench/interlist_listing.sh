#!/usr/bin/env bash
# Measures the interlister on a large real program, as ratios against two peers
# in the same run: cat copying the same assembly file, and objdump -dS, the
# platform's own way to see C among the instructions, on the same object. Then
# on made-up functions, whose order and files make reading them hard.
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

# 5,000 functions of 50 lines of one C file, or half of them each of two, or of one whose
# first line is longer than the buffers and is listed again before every function, 16,376
# characters of it, beside as many characters in short lines.
awk 'BEGIN { for (i = 1; i <= 250000; ++i) print "    line_of_source(" i ", \"about as long as code is\");" }' >made.c
cp made.c other.c
{ head -c 20000 /dev/zero | tr '\0' x; echo; tail -n +2 made.c; } >long.c
# made WHAT FILE...: the functions whose numbers are read, of the files in turn.
made() {
  awk -v what="$1" -v files="${*:2}" '
    function listed(first, lines, j, k) {
      print "\t.ifunc\t" first
      for (j = 1; j < lines; j += 4) {
        print "\t.iline\t" j
        for (k = 0; k < 8; ++k) print "\tmovl\t%eax, %ebx"
      }
      print "\t.iendfunc\t" first + lines
    }
    BEGIN { count = split(files, names, " ") }
    {
      print "\t.ifile\t\"" names[NR % count + 1] "\""
      if (what == "after_a_long_line") print "\t.ifunc\t1\n\t.iendfunc\t2"
      if (what == "after_short_lines") print "\t.ifunc\t1\n\t.iendfunc\t232"
      listed(50 * $1 + 3, 50)
    }'
}
random() { shuf --random-source=<(yes) -i 0-4998; }
seq 0 4998 | made plain made.c >plain.asm
seq 4998 -1 0 | made plain made.c >reverse.asm
random | made plain made.c >random.asm
seq 0 4998 | made plain made.c other.c >alternating.asm
random | made plain made.c other.c >alternating_random.asm
seq 0 4998 | made after_short_lines made.c >short_lines.asm
seq 0 4998 | made after_a_long_line long.c >long_line.asm

plain=$(best "$runs" interlist plain.asm made.cl)
show '5,000 functions in the order of their C file' "$plain"
# compare TEXT ASSEMBLY: beside the plain order.
compare() {
  local took
  took=$(best "$runs" interlist "$2.asm" made.cl)
  show "$1" "$took"
  printf '%-44s %9s times the plain order\n' '' "$(ratio "$took" "$plain")"
}
compare 'in reverse order' reverse
compare 'in random order' random
compare 'of two files in turn' alternating
compare 'of two files in turn, in random order' alternating_random
plain=$(best "$runs" interlist short_lines.asm made.cl)
show 'in order, after 231 lines each time' "$plain"
compare 'after a line of 20,000 characters' long_line
