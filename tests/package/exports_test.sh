#!/bin/bash
# What leaves the libraries is theirs: names of kortavin::, or of C that begin with kortavin_; no instance of a template
# of std, which would take the place of a host's.
# Usage: exports_test.sh LIBRARY...
set -euo pipefail
for library in "$@"; do
    names=$(nm -DC --defined-only "$library" | cut -d ' ' -f 3- | grep -vE '^(non-)?(virtual |covariant return )?thunk to |^_(init|fini)$')
    grep -q '^kortavin::' <<<"$names" || { echo "$library: nothing of kortavin::" && exit 1; }
    strangers=$(grep -vE '^((vtable|VTT|typeinfo( name)?|construction vtable|guard variable) for )?kortavin::|^kortavin_' <<<"$names" || true)
    [[ -z $strangers ]] || { printf '%s gives away:\n%s\n' "$library" "$strangers" && exit 1; }
done
