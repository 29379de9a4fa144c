#!/bin/bash
# Pages quote programs as they are compiled, and nothing else.
# Usage: quotes_test.sh (PAGE.md PROGRAM...)...   (the programs of this folder, in their order on the page)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for argument in "$@"; do
    if [[ $argument == *.md ]]; then
        page=$(basename "$argument")
        # shellcheck disable=SC2016 # the page's own quotation marks
        sed -n '/^```cpp$/,/^```$/{/^```/!p}' "$argument" >"$work/$page.quoted"
    else
        cat "$argument" >>"$work/$page.programs"
    fi
done
for quoted in "$work"/*.quoted; do
    diff "$quoted" "${quoted%.quoted}.programs"
done
