#!/bin/bash
# Installs what is missing, builds with warnings as errors, runs the whole test suite, and checks the Debian packages.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh cmake g++ make ninja-build libgtest-dev libcpp-httplib-dev pkgconf lld python3 util-linux
cmake --workflow --preset dev
scripts/check-packages.sh
