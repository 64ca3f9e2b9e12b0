#!/bin/bash
# host.sh LAUNCHER DIRECTORY MODULE SIGN: hosts a module until it has printed SIGN, stops it, and expects it to end
# with 0. One that has printed a port must answer all requests made before the stop. The caller sets the deadline.
set -euo pipefail
scratch=$(mktemp -d) service=
trap '[ -z "$service" ] || kill -KILL "$service"; rm -rf "$scratch"' EXIT
cd "$scratch"
ln -s "$1" svc
unset NORV_ROOT _APP_SHARE_DIR
export LD_LIBRARY_PATH=$2

./svc -boot="$3" >log &
service=$!
until grep -qs "$4" log; do
  kill -0 "$service" || { cat log; exit 1; }
  sleep 0.05
done

requests=()
if port=$(sed -n 's/^listening on 127.0.0.1://p' log) && [ -n "$port" ]; then
  [ "$(curl -sS "http://127.0.0.1:$port/")" = hello ]
  # More than it has threads to answer: some are only queued at the stop.
  for _ in {1..12}; do
    exec {request}<>"/dev/tcp/127.0.0.1/$port"
    printf 'GET /slow HTTP/1.1\r\nHost: test\r\n\r\n' >&"$request"
    requests+=("$request")
  done
fi
./svc -s=stop
for request in "${requests[@]}"; do
  [[ $(cat <&"$request") == "HTTP/1.1 200"*"line 10 of 10"*$'\r\n0\r\n\r' ]]
done
wait "$service" || { cat log; exit 1; }
service=
cat log
