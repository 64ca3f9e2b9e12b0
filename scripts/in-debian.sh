#!/bin/bash
# in-debian.sh SUITE COMMAND...: runs COMMAND as root in a copy of this tree in a new, minimal Debian SUITE, such as
# trixie. Nothing of it is left afterwards.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ "$(id -u)" -eq 0 ] || exec sudo "$PWD/scripts/in-debian.sh" "$@"
suite=$1
shift

scripts/install.sh debian-archive-keyring mmdebstrap
scratch=$(mktemp -d)
trap 'rm -rf --one-file-system "$scratch"' EXIT
root=$scratch/root

# The archive, and the way there, are this machine's.
here=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
sources=/etc/apt/sources.list.d/debian.sources
[ -e "$sources" ] || sources=/etc/apt/sources.list
sed "s/\b$here\b/$suite/g" "$sources" >"$scratch/sources"
apt-config dump | grep -E '^Acquire::(https?|Check)' >"$scratch/apt.conf" || true
mmdebstrap --quiet --variant=minbase --include=mount --aptopt="$scratch/apt.conf" "$suite" "$root" - <"$scratch/sources"
cp /etc/resolv.conf "$root/etc"
mkdir "$root/launcher"
tar --exclude=./build --exclude=./.git -c . | tar -x -C "$root/launcher"

# In namespaces, with which all mounts and processes end, and as their own root, not by chroot: as it is in a machine.
unshare --mount --pid --fork --kill-child bash -euc '
  mount --rbind "$0" "$0"
  cd "$0"
  mount --rbind /dev dev
  mount -t proc proc proc
  mount -t sysfs -o ro sys sys
  mount -t tmpfs run run
  pivot_root . mnt
  umount --lazy /mnt
  exec env -i -C /launcher PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
    http_proxy="${http_proxy-}" https_proxy="${https_proxy-}" "$@"
' "$root" "$@"
