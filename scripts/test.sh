#!/bin/bash
# Installs what is missing, builds with warnings as errors and runs the whole test suite.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh cmake g++ ninja-build make libgtest-dev libcpp-httplib-dev pkgconf curl lld \
  dpkg-dev gzip lintian mandoc python3 systemd util-linux
cmake --workflow --preset dev
cmake --workflow --preset release  # with the packages
