#!/usr/bin/env bash
# Measures the page of a large real program: how long clist takes to write it, how it does
# in a browser, and whether the lines that it marks are those of the object's line table.
# Beside it in the same run stands what the machine has otherwise: objdump -dS, which writes
# source among code, and its text in the same browser.
#
#   bench/page.sh [BUILD]     BUILD is build/bench if not given
#
# Needs Chromium and, in page/, what `npm ci` installs. The program is the C file that an
# npm package ships; it is fetched into CACHE (a folder below the user's cache if not set)
# the first time.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
build=$(realpath "${1:-build/bench}")
cache=${CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/interlist-bench}
package=better-sqlite3@11.5.0
runs=${RUNS:-9}

mkdir -p "$cache"
cd "$cache"
if [ ! -f sqlite3.c ]; then
  npm pack --silent "$package" >/dev/null
  tar -xzf better-sqlite3-*.tgz --strip-components=3 package/deps/sqlite3/sqlite3.c
  rm -f better-sqlite3-*.tgz
fi
[ -f sqlite3.s ] || gcc -S -g -O1 sqlite3.c -o sqlite3.s
[ -f sqlite3.o ] || gcc -c sqlite3.s -o sqlite3.o
cp "$root"/examples/matrix.c .

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

seconds() { awk -v t="$1" 'BEGIN { printf "%.2f", t / 1e6 }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
clist() { "$build/bin/clist" "$@"; }

page=$(best "$runs" clist --html -o sqlite3.html sqlite3.s)
disassembly=$(best 1 objdump -dS sqlite3.o)
mv output sqlite3.txt
clist --html -o matrix.html gcc -O2 -c matrix.c

printf 'page of %s bytes of assembly: %s bytes in %s s (aim: 9 MB, 1 s)\n' \
  "$(stat -c %s sqlite3.s)" "$(stat -c %s sqlite3.html)" "$(seconds "$page")"
printf 'objdump -dS:                %s bytes in %s s\n' \
  "$(stat -c %s sqlite3.txt)" "$(seconds "$disassembly")"
printf 'objdump -dS : page          %s\n' "$(ratio "$disassembly" "$page")"
printf 'page of a small program:    %s bytes (aim: 600 KB)\n' "$(stat -c %s matrix.html)"

node "$root/bench/page.mjs" "$PWD/sqlite3.html" "$PWD/matrix.html" "$PWD/sqlite3.txt"

# Whether the lines that the page marks are those of the line table, for so many random
# instructions.
INSTRUCTIONS=${INSTRUCTIONS:-1000} SOURCE=$PWD/sqlite3.c CLIST=$(realpath "$build/bin/clist") \
  npm --prefix "$root/page" test -- truth
