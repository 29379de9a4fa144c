#!/bin/bash
# What only exports needs no display: the library is linked with no windowing toolkit, and the tool at work does not even
# look for one.
# Usage: no_toolkit_test.sh LIBRARY TOOL
set -euo pipefail
library=$1 tool=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# expect LIBRARY FILE: the file names the library that is surely there, and none of a toolkit's.
expect() {
    if ! grep -q "$1" "$2" || grep -E 'lib(Qt|kortavin-qt|xcb|X11|wayland|GL|EGL)' "$2"; then
        echo "no $1, or a toolkit, among the libraries:" && cat "$2" && exit 1
    fi
}

ldd "$library" >"$work/linked"
expect libodbc "$work/linked"

export KORTAVIN_CONNECTION=$work/atlas.db
"$tool" sample "$work/atlas.db"
LD_DEBUG=libs LD_DEBUG_OUTPUT=$work/loaded "$tool" export 'SELECT * FROM Cities' -o "$work/cities"
expect libkortavin "$(echo "$work"/loaded.*)"
