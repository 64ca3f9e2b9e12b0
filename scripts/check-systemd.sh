#!/bin/bash
# Runs the package of build/packages, with examples/minimal, under systemd as process 1 of a minimal system.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ "$(id -u)" -eq 0 ] || exec sudo "$PWD/scripts/check-systemd.sh"
scripts/install.sh gcc libc6-dev mmdebstrap procps systemd-container
scratch=$(mktemp -d); export TMPDIR=$scratch  # mmdebstrap(1) leaves a directory there when it is killed.
mapfile -t groups < <(findmnt -nro TARGET -t cgroup,cgroup2 | sed "/cpuset/d; s|$|/launcher-$$|")
clean_up() {  # unshare(1) waits for the process that it has started, and that, as process 1, for all others.
  if pkill -KILL -P "$!"; then wait; fi
  for group in "${groups[@]}"; do find "$group" -depth -type d -delete || true; done
  rm -rf "$scratch"
}
trap clean_up EXIT
if ! mkdir "${groups[@]}" || ! unshare --mount-proc --pid --fork true; then echo "skipped: not permitted"; exit; fi

install -D -t "$scratch/opt/agent/lib" build/packages/launcher_*.deb
cc -shared -fPIC -Iinclude examples/minimal/minimal.c -o "$scratch/opt/agent/lib/libagent.so"
install /dev/stdin "$scratch/check" <<'END'
#!/bin/bash -aeu
is() { timeout 30 bash -c "until $1; do sleep 0.1; done" 2>/dev/null || { echo "not: $1"; exit 1; }; echo "is: $1"; }
main() { systemctl show --property MainPID --value "launcher@$1"; }
recorded() { [ "$(cat "/run/launcher/$1/$1_0.pid")" = "$(main "$1")" ]; }
says() { journalctl --unit "launcher@$1" --output cat | grep "$2" >/dev/null; }
sandboxed() { [[ $(stat -c %u "/proc/$(main agent)") == $1 ]] && nsenter -t "$(main agent)" -m test ! -w /etc; }
start() {  # INSTANCE LINE: with the example, of which LINE applies too
  sed -E "s/^#($2)/\1/" agent.conf | install -D -m 644 /dev/stdin "/etc/systemd/system/launcher@$1.service.d/x.conf"
  systemctl daemon-reload; systemctl restart "launcher@$1"
}
exec >/dev/console 2>&1; cd /usr/share/doc/launcher/examples; systemctl set-environment NORV_ROOT=/
start agent none; is 'says agent "agent runs, with 2 parameters"'; is 'recorded agent'; is 'sandboxed "6????"'
systemctl stop launcher@agent; is 'says agent "stop the service"'; is 'says agent "minimal ends"'
useradd agent; start agent '.*User='; is 'recorded agent'; is 'sandboxed "$(id -u agent)"'
for s in HUP INT; do old=$(main agent); kill -$s "$old"; is '[ "$(main agent)" != "$old" ] && recorded agent'; done
start agent2 Environment=MODULE; is 'says agent2 "agent2 runs"'; is 'recorded agent2'; is 'recorded agent'
kill "$(main agent)"; is '[ "$(systemctl is-active launcher@agent)" = inactive ]'
END
unshare --mount-proc --pid --fork --wd="$scratch" bash -euc '
  for group; do echo 0 >"$group/cgroup.procs"; done
  mmdebstrap --quiet --variant=minbase --include=systemd-sysv "$(sed -n s/^VERSION_CODENAME=//p /etc/os-release)" root
  cp -r check opt root; chroot root dpkg --install --recursive /opt
  mount -t tmpfs none /run  # systemd-nspawn(1) leaves locks there when it is killed.
  exec timeout 300 systemd-nspawn --quiet --register=no --keep-unit --private-network --directory=root --boot \
    systemd.run=/check systemd.run_{success,failure}_action=exit systemd.show_status=no systemd.log_level=crit
' boot "${groups[@]}" </dev/null & wait "$!"
