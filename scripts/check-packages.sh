#!/bin/bash
# Installs what is missing, builds the Debian packages, and looks at them as their users will.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh blhc lintian mandoc systemd
scripts/build-packages.sh
DEB_BUILD_OPTIONS=nocheck scripts/build-packages.sh build/packages-again
(cd build/packages && sha256sum -- *.deb) | tee build/packages.sha256
(cd build/packages-again && sha256sum --quiet --check ../packages.sha256)
blhc build/packages-again.log
(cd build/packages && dpkg-source -I.git -Ibuild -b "$OLDPWD" >/dev/null)
# The older of two Debians does not know the newest standards.
lintian --allow-root --display-info --suppress-tags newer-standards-version --fail-on error,warning,info \
  build/packages/*.{deb,dsc}
mandoc -T lint -W warning man/*

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
for package in build/packages/*.deb; do dpkg-deb -x "$package" "$root"; done
mkdir "$root/page"
PKG_CONFIG_PATH=$root/usr/share/pkgconfig tests/kit/page.sh "$root/usr" "$root/page"

# The root gets the system's own targets, which the unit refers to, and the drop-in.
install -D -m 644 -t "$root/usr/lib/systemd/system" /usr/lib/systemd/system/*.{target,slice}
install -D -m 644 -t "$root/etc/systemd/system/launcher@agent.service.d" \
  "$root/usr/share/doc/launcher/examples/agent.conf"
export MANPATH=$root/usr/share/man
systemd-analyze --root="$root" verify launcher@agent.service launcher@other.service 2>&1 | tee "$root/remarks"
[ ! -s "$root/remarks" ]
