#!/bin/bash
# page.sh PREFIX DIRECTORY: follows the page for authors by the letter, in an empty directory. Whatever becomes of it,
# the service ends with the page, and both after 100 seconds.
set -euo pipefail
cd "$2"
sed -n '/^```sh/,/^```$/{/^```/!p}' "$1/share/doc/launcher/service-modules.md" >page
PATH=$1/bin:$PATH timeout -s KILL 100 bash -euc 'trap "jobs -p | xargs -r kill -KILL" EXIT; . ./page' | tee log
grep -qx 'agent ends' log && grep -qx 'the service ended with status 0' log
