#!/bin/bash
# install.sh NAME...: installs the Debian packages among NAME that are missing.
set -euo pipefail

missing=()
for name in "$@"; do
  dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
done
[ ${#missing[@]} -gt 0 ] || exit 0
root=()
[ "$(id -u)" -eq 0 ] || root=(sudo)
"${root[@]}" apt-get update -q
"${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
