#!/usr/bin/env bash
# Shows what the project is for: builds it, compiles an example with the system's C
# compiler and prints its listing in both forms: in the order of the code, and in that of
# the source. On a Debian system it installs the compilers and the build tools where
# missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# What is said on the way goes to standard error, so that standard output is listings.
{
  scripts/install_packages.sh gcc g++ cmake ninja-build nlohmann-json3-dev zlib1g-dev
  cmake --preset release -B build/demo -DINTERLIST_TESTS=OFF
  cmake --build build/demo --target clist interlist gas2interlist symdecode
} >&2

PATH=$PWD/build/demo/bin:$PATH
out=$PWD/build/demo/listings
mkdir -p "$out"

cd examples
for source in *.c; do
  clist -o "$out/$source.lst" "${CC:-cc}" -O1 -c "$source"
  clist --classic -o "$out/$source.cl" "${CC:-cc}" -O1 -c "$source"
done

printf '\n=== clist %s -O1 -c walk.c\n\n' "${CC:-cc}"
clist "${CC:-cc}" -O1 -c walk.c
printf '\n=== clist --classic %s -O1 -c walk.c\n\n' "${CC:-cc}"
# The debugging data behind the code is of no interest here.
sed '/^[[:blank:]]*\.section[[:blank:]]*\.debug_/,$d' "$out/walk.c.cl"
{
  printf '\nThe whole listings, and those of the other examples, are in %s.\n' "$out"
  printf 'With your own source: build/demo/bin/clist gcc -O2 -c prog.c\n'
} >&2
