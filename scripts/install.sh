#!/bin/bash
# install.sh [.] NAME...: installs the Debian packages among NAME that are missing, and, with the ".", what
# debian/control says that a build depends on. Needs neither root nor sudo when all is there.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

get() {
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  "${root[@]}" apt-get update -q
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "$1" -q -y --no-install-recommends "${@:2}"
}

if [ "$1" = . ]; then
  shift
  # It belongs to what every build depends on: where it is missing, so is more.
  dpkg-checkbuilddeps 2>/dev/null || get build-dep .
fi
missing=()
for name in "$@"; do
  dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
done
[ ${#missing[@]} -eq 0 ] || get install "${missing[@]}"
