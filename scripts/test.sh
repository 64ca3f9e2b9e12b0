#!/bin/bash
# Installs what is missing, builds with warnings as errors, runs the whole test suite, and checks the Debian packages.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh . ninja-build libcpp-httplib-dev lld
cmake --workflow --preset dev
scripts/check-packages.sh
