#!/bin/bash
# build-packages.sh [DIRECTORY [OPTION...]]: installs what is missing, and builds the Debian packages into DIRECTORY,
# by default build/packages, with the OPTIONs of dpkg-buildpackage(1). The build runs the test suite, unless
# DEB_BUILD_OPTIONS has "nocheck"; what it prints is in DIRECTORY.log.
set -euo pipefail
packages=$(realpath -m "${1:-$(dirname "${BASH_SOURCE[0]}")/../build/packages}")
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh .
# A copy, because the packages end up beside the tree that they are built from.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/launcher"
tar --exclude=./build --exclude=./.git -c . | tar -x -C "$scratch/launcher"
rm -rf "$packages"
mkdir -p "$packages"
cd "$scratch/launcher"
dpkg-buildpackage -b -uc "${@:2}" >"$packages.log" 2>&1 || { cat "$packages.log"; exit 1; }
mv "$scratch"/*.deb "$packages"
