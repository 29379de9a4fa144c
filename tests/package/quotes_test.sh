#!/bin/bash
# A page quotes programs as they are compiled.
# Usage: quotes_test.sh PAGE PROGRAM...
set -euo pipefail
page=$(cat "$1")
for program in "${@:2}"; do
    [[ $page == *$'\n```cpp\n'"$(cat "$program")"$'\n```\n'* ]] || { echo "$1 does not quote $program" && exit 1; }
done
