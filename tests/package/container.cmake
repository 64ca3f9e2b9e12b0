# Runs `module` in `launcher` as process 1 of a pid namespace, stops it by a signal from outside (`stop` is "signal") or
# by a stop mode run inside ("mode"), and expects it to end with 0.
execute_process(COMMAND unshare --pid --fork --mount-proc true RESULT_VARIABLE refused ERROR_VARIABLE reason)
if(refused)
  message("skipped: this machine permits no pid namespace: ${reason}")
  return()
endif()
cmake_path(GET module PARENT_PATH modules)
cmake_path(GET module STEM name)
string(REGEX REPLACE "^lib" "" name ${name})
execute_process(COMMAND bash -c [[
  set -eu
  scratch=$(mktemp -d) container=
  trap '[ -z "$container" ] || kill -KILL "$container"; rm -rf "$scratch"' EXIT
  cd "$scratch"
  ln -s "$1" svc
  unset NORV_ROOT
  export _APP_SHARE_DIR=$scratch LD_LIBRARY_PATH=$2

  unshare --pid --fork --kill-child --mount-proc ./svc -boot="$3" >log &
  container=$!
  until grep -s 'WriteProcFile finish' log; do
    kill -0 "$container"
    sleep 0.05
  done
  [ "$(cat svc_0.pid)" = 1 ]
  launcher=$(tr -d " " <"/proc/$container/task/$container/children")
  case $4 in
    signal) kill -TERM "$launcher" ;;
    # 137: the end of process 1 is that of the whole namespace, the stop mode included if it still runs.
    mode) nsenter -t "$launcher" --pid --mount "$scratch/svc" -s=stop || [ $? -eq 137 ] ;;
  esac
  wait "$container"
  container=
  cat log
  grep -q '^stop the service' log
]] container ${launcher} ${modules} ${name} ${stop} COMMAND_ERROR_IS_FATAL ANY)
