#!/usr/bin/env bash
# Builds everything in the release configuration and runs the tests. On a Debian
# system it installs the compiler, the build tools and the libraries where missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install_packages.sh g++ cmake ninja-build nlohmann-json3-dev zlib1g-dev libgtest-dev \
  pkg-config binutils dpkg-dev file

cmake --preset release
cmake --build --preset release
ctest --preset release
