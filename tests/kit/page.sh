#!/bin/bash
# page.sh PREFIX DIRECTORY: follows the page for authors by the letter, in an empty directory. Only the reader's pause
# before the stop is put in: until there is what to stop.
set -euo pipefail
cd "$2"
sed -n '/^```sh/,/^```$/p' "$1/share/doc/launcher/service-modules.md" |
  sed '/^```/d; s/^launcher .* &$/setpriv --pdeathsig KILL &/
    /-s=stop/i until [ -s launcher_1.pid ]; do sleep 0.1; done' >page
PATH=$1/bin:$PATH bash -eu page | tee log
grep -qx 'agent ends' log && grep -qx 'the service ended with status 0' log
