#!/bin/bash
# Builds the image of docs/examples from build/packages and examples/minimal, runs it alone and as its manifest says.
# Nothing is fetched but packages of this machine's own system, of which the base image is made.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
command -v podman >/dev/null || { echo "skipped: podman is not installed"; exit; }
# shellcheck source=/dev/null
. /etc/os-release

scripts/install.sh gcc libc6-dev mmdebstrap runc catatonit
scratch=$(mktemp -d)
# Storage, state and settings of its own. Podman's default limits are more than a machine may permit.
export CONTAINERS_CONF=$scratch/containers.conf
printf '[containers]\ndefault_ulimits = ["nofile=1000:1000", "nproc=1000:1000"]\n' >"$CONTAINERS_CONF"
pod() {
  podman --root "$scratch/root" --runroot "$scratch/run" --tmpdir "$scratch/tmp" --runtime runc \
    --cgroup-manager cgroupfs --events-backend none "$@"
}
clean_up() {
  { pod pod rm -fa -t 0; pod rm -fa -t 0; pod volume rm -fa; pod rmi -fa; } >/dev/null 2>&1 || true
  rm -rf "$scratch"
}
trap clean_up EXIT

says() { pod logs "$1" | grep -c ' runs, with '; }  # how often CONTAINER's service has begun
expect() {                                          # COUNT CONTAINER: it begins for the COUNTth time
  for _ in {1..300}; do
    if [ "$(says "$2")" = "$1" ]; then return; fi
    sleep 0.1
  done
  pod logs "$2"
  return 1
}

mkdir "$scratch/image"
cp docs/examples/Dockerfile build/packages/launcher_*.deb "$scratch/image"
cc -shared -fPIC -Iinclude examples/minimal/minimal.c -o "$scratch/image/libagent.so"
mmdebstrap --quiet --variant=apt "$VERSION_CODENAME" - | pod import --quiet - "localhost/debian:$VERSION_ID" >/dev/null
pod build --quiet --pull=never --network none --build-arg "DEBIAN=$VERSION_ID" -t agent:1.0.0 \
  "$scratch/image" >/dev/null

pod run --detach --network none --name alone agent:1.0.0 >/dev/null
expect 1 alone
[ "$(pod exec alone cat /run/launcher/agent_0.pid)" = 1 ]
pod stop --time 60 alone >/dev/null
pod logs alone
[ "$(pod inspect --format '{{.State.ExitCode}}' alone)" = 0 ]  # 137 had it been killed
echo "the image alone: stopped, status 0"

pod kube play --network none docs/examples/agent.yaml >/dev/null
mapfile -t replicas < <(pod ps --quiet --filter label=app=agent)
for replica in "${replicas[@]}"; do expect 1 "$replica"; done
# 137: the end of process 1 is that of the whole container, the stop mode included if it still runs.
pod exec "${replicas[0]}" /opt/agent/bin/agent -s=stop || [ $? -eq 137 ]
expect 2 "${replicas[0]}"
echo "the manifest: ${#replicas[@]} replicas run; one was stopped from inside and started again"
