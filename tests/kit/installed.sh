#!/bin/bash
# installed.sh BUILD LINKER: installs the launcher and the kit of BUILD, moves them, and makes modules with them as an
# author would: with CMake and with pkg-config, by the compilers CC and CXX and by LINKER.
set -euo pipefail
here=$(dirname "$0")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
cmake --install "$1" --prefix installed
mv installed prefix
export PATH=$PWD/prefix/bin:$PATH PKG_CONFIG_PATH=$PWD/prefix/share/pkgconfig LDFLAGS=-fuse-ld=$2
doc=$PWD/prefix/share/doc/launcher
host() { setpriv --pdeathsig KILL "$here/host.sh" "$PWD/prefix/bin/launcher" "$@"; }
one_file() {
  local flags
  read -ra flags <<<"$(pkg-config --cflags --libs launcher)"
  "$CC" "$LDFLAGS" -shared -fPIC "${flags[@]}" "$1" -o libagent.so
}

# Sources that must not build, and what the message must name.
bootstrap='int Bootstrap(int argc, char** argv) { return argc + !argv; }'
faults="no_bootstrap.c|does not define Bootstrap|int StopService(void) { return 0; }
no_stop_service.c|does not define StopService|$bootstrap
mangled.cpp|does not define StopService|$bootstrap namespace own { int StopService(void) { return 0; } }
wrong_signature.c|conflicting .*StopService|$bootstrap int StopService(int when) { return when; }
undefined.c|undefined.* .*Missing|$bootstrap int Missing(void); int StopService(void) { return Missing(); }"
mkdir -p build/sources
while IFS='|' read -r file _ source; do echo "$source" >"build/sources/$file"; done <<<"$faults"
# Without the header, C++ would mangle the names, and hidden visibility would hide them from the launcher.
sed '/service_module.h/d' "$doc/examples/ticker/ticker.cpp" >build/sources/no_header.cpp

cmake -S "$here/consumer" -B build -D CMAKE_PREFIX_PATH="$PWD/prefix" -D examples="$doc/examples" \
  -D CMAKE_CXX_STANDARD=17
cmake --build build --target all no_header
host "$PWD/build/minimal" minimal "runs, with"
host "$PWD/build/ticker" ticker "tick 1"
host "$PWD/build" no_header "tick 1"
one_file "$doc/examples/minimal/minimal.c"
host "$PWD" agent "runs, with"
while IFS='|' read -r file message _; do
  for build in "cmake --build build --target ${file%.*}" "one_file build/sources/$file"; do
    if $build >log 2>&1 || ! grep "$message" log; then cat log; exit 1; fi
  done
done <<<"$faults"

mkdir page
"$here/page.sh" "$PWD/prefix" page
