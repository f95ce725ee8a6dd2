#!/usr/bin/env bash
# check_launcher.sh CLIST [PACKAGE...]
#
# Builds packages of Debian's sources twice, with the compiler alone and with clist's
# launcher before it, and compares byte for byte what the compiles gave: objects,
# archives, programs, dependency files, messages. By hand: it fetches the sources, and
# takes some minutes. Packages are built by ./configure where they have one, else by make.
set -euo pipefail

clist=$(realpath "$1")
shift
packages=("$@")
[ ${#packages[@]} -gt 0 ] || packages=(lz4 sed)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# An apt of its own, which knows where sources are.
mkdir -p apt/lists/partial apt/parts
cat >apt/sources.list <<END
deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] http://deb.debian.org/debian bookworm main
END
fetch() {
  apt-get -q -o Dir::Etc::sourcelist="$work/apt/sources.list" -o Dir::Etc::sourceparts="$work/apt/parts" \
    -o Dir::State::lists="$work/apt/lists" -o APT::Sandbox::User=root "$@"
}
fetch update >apt/log

# build DIRECTORY COMPILER: the messages go to DIRECTORY.messages.
build() {
  (
    cd "$1"
    export LC_ALL=C
    if [ -x configure ]; then
      ./configure CC="$2" >configure.messages 2>&1
    fi
    make -j4 CC="$2" >build.messages 2>&1
  )
}

# What a compile of the tree gave, by name and checksum.
results() {
  (cd "$1" && find . -type f \( -name '*.o' -o -name '*.a' -o -name '*.so*' -o -name '*.d' \
    -o -name '*.Po' -o -perm -u+x \) ! -name 'config.status' ! -name 'libtool' -print0 |
    sort -z | xargs -0 sha256sum)
}

# The messages in an order of their own: -j4 mixes them.
messages() {
  sed "s|$clist --launcher ||g" "$1/build.messages" | LC_ALL=C sort
}

bad=0
for package in "${packages[@]}"; do
  fetch source --download-only "$package" >fetch.log 2>&1
  dpkg-source -x --no-check "$(ls "${package}"_*.dsc)" original >fetch.log 2>&1
  for way in plain launched; do
    cp -a original tree
    compiler=gcc
    [ "$way" = plain ] || compiler="$clist --launcher gcc"
    build tree "$compiler"
    results tree >"$way.results"
    messages tree >"$way.messages"
    listings=$(find tree -name '*.o.lst' | wc -l)
    objects=$(find tree -name '*.o' | wc -l)
    rm -rf tree
  done
  if cmp plain.results launched.results && cmp plain.messages launched.messages; then
    echo "$package: the same: $(wc -l <plain.results) files, $(wc -l <plain.messages) lines;" \
      "$listings listings of $objects objects"
  else
    echo "$package: differs" >&2
    diff plain.results launched.results | head -n 20 >&2 || true
    diff plain.messages launched.messages | head -n 20 >&2 || true
    bad=1
  fi
  rm -rf original "$package"_*
done
exit $bad
