#!/bin/bash
# language.sh EXAMPLE BUILD WORK: makes a module of an example's one file by the command at its top, with the kit of
# BUILD, and hosts it. The same file without StopService must not link.
set -euo pipefail
source=$(echo "$1"/agent.*)
command=$(sed -nE 's|^//[[:blank:]]+(.* -o libagent.so .*)|\1|p' "$source")
compiler=${command%% *}
case $compiler in
  cc) pkg-config --exists python3-embed ;;
  *) "$compiler" --version || "$compiler" version ;;
esac >/dev/null 2>&1 || { echo "skipped: what $compiler needs is not here"; exit; }
cmake --install "$2" --prefix "$3/prefix" >/dev/null
cd "$3"
export PKG_CONFIG_PATH=$3/prefix/share/pkgconfig CGO_CFLAGS=-I$3/prefix/include XDG_CACHE_HOME=$3 XDG_CONFIG_HOME=$3

sed s/StopService/Stop/ "$source" >"${source##*/}"
(bash -euc "$command" 2>&1 || true) | grep 'does not define StopService'
cp "$source" .
bash -euc "$command"
exec "${0%/*}/host.sh" "$3/prefix/bin/launcher" "$3" agent " runs, with"
