#!/bin/bash
# in-debian.sh SUITE COMMAND...: runs COMMAND as root in a copy of this tree in a new, minimal Debian SUITE, such as
# trixie. Nothing of it is left afterwards.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ "$(id -u)" -eq 0 ] || exec sudo "$PWD/scripts/in-debian.sh" "$@"
suite=$1
shift

scripts/install.sh debian-archive-keyring mmdebstrap
# The archive, and the way there, are this machine's.
here=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
sources=/etc/apt/sources.list.d/debian.sources
[ -e "$sources" ] || sources=/etc/apt/sources.list
# The hook finds /dev, /proc, /sys and the machine's name servers in place, and ends with all processes it has started.
sed "s/\b$here\b/$suite/g" "$sources" | mmdebstrap --mode=unshare --quiet --variant=minbase \
  --aptopt=<(apt-config dump | grep -E '^Acquire::(https?|Check)') \
  --customize-hook='
    mkdir "$1/launcher"
    tar --exclude=./build --exclude=./.git -c . | tar -x -C "$1/launcher"
    exec chroot "$1" env -i -C /launcher PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
      http_proxy="${http_proxy-}" https_proxy="${https_proxy-}"'" ${*@Q}" "$suite" /dev/null -
