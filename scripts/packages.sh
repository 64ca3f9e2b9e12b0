# Sourced by the other scripts: install_packages NAME... installs the Debian packages among NAME that are missing.

install_packages() {
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  "${root[@]}" apt-get update -q
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

BUILD_PACKAGES=(cmake g++ make)
