#!/usr/bin/env bash
# Shows what the project is for: builds it, compiles the examples with the system's C
# compiler, and prints the listings that interlist makes of them. On a Debian system it
# installs the compilers and the build tools where missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# What is said on the way goes to standard error, so that standard output is listings.
{
  scripts/install_packages.sh gcc g++ cmake ninja-build
  cmake --preset release -B build/demo -DINTERLIST_TESTS=OFF -DINTERLIST_CLIST=OFF
  cmake --build build/demo --target interlist gas2interlist
} >&2

place=$PWD/build/demo/bin/gas2interlist
list=$PWD/build/demo/bin/interlist
out=$PWD/build/demo/listings
mkdir -p "$out"

cd examples
for source in *.c; do
  name=${source%.c}
  "${CC:-cc}" -S -g -O1 "$source" -o "$out/$name.s"
  "$place" "$out/$name.s" -o "$out/$name.asm"
  "$list" "$out/$name.asm" "$out/$name.cl"
  printf '\n=== %s\n\n' "$source"
  # The debugging data behind the code is of no interest here.
  sed '/^[[:blank:]]*\.section[[:blank:]]*\.debug_/,$d' "$out/$name.cl"
done
printf '\nThe whole listings are in %s.\n' "$out" >&2
