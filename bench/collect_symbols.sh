#!/usr/bin/env bash
# Writes mangled C++ names, one a line and each once, in the order in which the libraries
# list them: a corpus for bench/scheme1_bench.cpp.
#
#   collect_symbols.sh [FOLDER...] >names
#       the names that the libraries of these folders use or define; without FOLDER those
#       of the machine's own libraries
#   collect_symbols.sh --templates [FOLDER...] >names
#       only long names with template arguments; without FOLDER those of a few big Debian
#       libraries, whose packages are fetched and unpacked (not installed) below CACHE (a
#       folder below the user's cache if not set) the first time
set -euo pipefail

least=0
if [ "${1-}" = --templates ]; then
  least=200
  shift
fi

fetch() {
  mkdir -p "$1"
  cd "$1"
  for package in libopenvdb10.0 librados2 libpcl-features1.13 libmapnik3.1; do
    [ -d "$package" ] && continue
    apt-get download "$package" >&2
    dpkg -x "$package"_*.deb "$package.part"
    mv "$package.part" "$package"
    rm -f "$package"_*.deb
  done
}

if [ $# -eq 0 ] && [ $least -eq 0 ]; then
  set -- /usr/lib/*-linux-gnu* /usr/lib/llvm-*/lib
elif [ $# -eq 0 ]; then
  cache=${CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/demangle-bench}
  (fetch "$cache")
  set -- "$cache"/*/usr/lib/*
fi

for folder in "$@"; do
  find "$folder" -maxdepth 1 -name '*.so*' -type f 2>/dev/null || true
done | LC_ALL=C sort -u | while read -r library; do
  nm -D --no-sort "$library" 2>/dev/null || true
done | awk -v least=$least '{
  name = $NF
  sub(/@.*/, "", name)
  if (name ~ /^_Z/ && length(name) >= least && (!least || name ~ /I/) && !seen[name]++) print name
}'
