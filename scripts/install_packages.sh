#!/usr/bin/env bash
# Installs the Debian packages named as arguments that are not there yet. Needs root
# or sudo, and only when one is missing; away from Debian it leaves that to the user.
set -euo pipefail

command -v dpkg-query >/dev/null || exit 0

missing=()
for package in "$@"; do
  state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=(env DEBIAN_FRONTEND=noninteractive)
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "install_packages.sh: these packages are missing and need root to install: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo "${as_root[@]}")
fi

# Package lists are fetched only when those at hand do not name every package.
if ! apt-cache show --no-all-versions "${missing[@]}" >/dev/null 2>&1; then
  "${as_root[@]}" apt-get update
fi
# Lists may name versions that the archive has replaced since; new lists cure that.
install=(apt-get install -y --no-install-recommends "${missing[@]}")
"${as_root[@]}" "${install[@]}" || {
  "${as_root[@]}" apt-get update
  "${as_root[@]}" "${install[@]}"
}
