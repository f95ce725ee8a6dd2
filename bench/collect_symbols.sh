#!/bin/sh
# Writes the mangled C++ names that the machine's shared libraries use or define, one
# a line and each once: the corpus of bench/scheme1_bench.cpp.
# Usage: collect_symbols.sh [FOLDER...] >names
if [ $# -eq 0 ]; then
    set -- /usr/lib/x86_64-linux-gnu /usr/lib/llvm-*/lib
fi
for folder in "$@"; do
    find "$folder" -maxdepth 1 -name '*.so*' -type f
done | sort -u | while read -r library; do
    nm -D "$library" 2>/dev/null
done | awk '{ print $NF }' | sed 's/@.*//' | grep '^_Z' | LC_ALL=C sort -u
