#!/bin/bash
# Installs what is missing, builds, starts the ticker service and stops it with a second launcher, and shows both sides.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh cmake g++ ninja-build
build=build/demo
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF >/dev/null
cmake --build "$build" --target launcher ticker >/dev/null

scratch=$(mktemp -d)
service=
trap '[ -z "$service" ] || kill -KILL "$service" 2>/dev/null || true; rm -rf "$scratch"' EXIT
mkdir -p "$scratch/bin" "$scratch/var/oss_tmp"
ln -s "$PWD/$build/src/launcher" "$scratch/bin/demo-ticker"
export NORV_ROOT=$scratch LD_LIBRARY_PATH=$PWD/$build/examples/ticker

"$scratch/bin/demo-ticker" -p=1 -boot=ticker >"$scratch/service.log" &
service=$!
for _ in $(seq 300); do
  grep -q '^tick 3' "$scratch/service.log" && break
  kill -0 "$service" 2>/dev/null || break
  sleep 0.1
done

stop_status=0 service_status=0
"$scratch/bin/demo-ticker" -p=1 -s=stop >"$scratch/stop.log" || stop_status=$?
wait "$service" || service_status=$?
service=

printf -- '--- the service: demo-ticker -p=1 -boot=ticker\n'
cat "$scratch/service.log"
printf -- '--- exit status %s\n\n--- the stop: demo-ticker -p=1 -s=stop\n' "$service_status"
cat "$scratch/stop.log"
printf -- '--- exit status %s\n' "$stop_status"
[ "$service_status" -eq 0 ] && [ "$stop_status" -eq 0 ] && grep -q '^stop the service' "$scratch/service.log"
