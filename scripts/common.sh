# shellcheck shell=bash disable=SC2034
# Shared by the scripts of this folder, which source it.

kRoot=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

fail() {
    echo "scripts/${0##*/}: $*" >&2
    exit 1
}

# sourceFiles ROOT: every header and source below ROOT, as paths from there; not what builds and tools leave behind.
sourceFiles() {
    (cd "$1" && find . \( -name '.?*' -o -path ./build -o -path ./out \) -prune -o \
        -type f \( -name '*.h' -o -name '*.cpp' \) -printf '%P\n') | sort
}
