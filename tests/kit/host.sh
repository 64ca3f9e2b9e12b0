#!/bin/bash
# host.sh LAUNCHER DIRECTORY MODULE SIGN: hosts a module until it has printed SIGN, stops it, and expects it to end
# with 0. One that has printed a port must answer all requests made before the stop. The caller sets the deadline, and
# the service ends with the script in any case.
set -euo pipefail
scratch=$(mktemp -d)
trap 'cat log; rm -rf "$scratch"' EXIT
cd "$scratch"
ln -s "$1" svc
unset NORV_ROOT _APP_SHARE_DIR
export LD_LIBRARY_PATH=$2

setpriv --pdeathsig KILL ./svc -boot="$3" >log &
service=$!
until grep -qs "$4" log; do kill -0 "$service"; sleep 0.05; done

port=$(sed -n 's/^listening on 127.0.0.1://p' log)
requests=${port:+$(seq 10 21)}  # more than it has threads to answer: some are only queued at the stop
for request in $requests; do
  eval "exec $request<>/dev/tcp/127.0.0.1/$port"
  printf 'GET /slow HTTP/1.1\r\nHost: test\r\n\r\n' >&"$request"
done
./svc -s=stop
for request in $requests; do
  [[ $(cat <&"$request") == "HTTP/1.1 200"*"line 10 of 10"*$'\r\n0\r\n\r' ]]
done
wait "$service"
