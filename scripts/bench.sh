#!/bin/bash
# Installs what is missing, builds the launcher and the programs it is measured with, and prints the tables.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh cmake g++ ninja-build libbenchmark-dev python3 valgrind
cmake --preset bench >/dev/null
cmake --build --preset bench >/dev/null
python3 bench/bench.py build/bench
