#!/bin/bash
# Installs a build and compiles hosts against it, once through pkg-config and once through CMake.
# Usage: package_test.sh BUILD-FOLDER COMPILER HOST...   (exportrivers, guest, wizardplain, qthost, wizardqt)
set -euo pipefail
build=$1 compiler=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'tail -n 30 "$work/log"' ERR

# What each host asks for: pkg-config's packages; packages and libraries of CMake.
declare -A modules=([exportrivers]=kortavin [guest]=kortavin [wizardplain]=kortavin [qthost]='kortavin-qt Qt6Widgets')
declare -A finds=([exportrivers]='' [guest]='' [wizardplain]='' [qthost]='find_package(Qt6 REQUIRED COMPONENTS Widgets)')
declare -A targets=([exportrivers]=kortavin::kortavin [guest]=kortavin::kortavin [wizardplain]=kortavin::kortavin
    [qthost]='kortavin::kortavin-qt kortavin::kortavin Qt6::Widgets')
modules[wizardqt]=${modules[qthost]} finds[wizardqt]=${finds[qthost]} targets[wizardqt]=${targets[qthost]}

# Those with the wizard would wait for a person: they get no database, and are to tell why not.
run() {
    export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$work
    case $1 in
        */exportrivers) "$1" && [[ $(head -n 2 rivers.csv) == $'"Name","RoundedLengthKm"\r\n"Nile",6650\r' ]] && rm rivers.csv ;;
        */wizard*) [[ $("$1" 'Driver=/none.so' 2>&1) == *"Can't open lib '/none.so'"* ]] ;;
        *) "$1" ;;
    esac || { echo "$1 answers $?" && exit 1; }
}

cmake --install "$build" --prefix "$work/prefix" >"$work/log"
cd "$work"
"$work/prefix/bin/kortavin" sample atlas.db
libraries=$(dirname "$(find "$work/prefix" -name libkortavin.so)")

mkdir "$work/project"
cp "$here"/*.{h,cpp} "$work/project"
cat >"$work/project/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.23)
project(host LANGUAGES CXX)
find_package(kortavin REQUIRED)
CMAKE
for host in "${@:3}"; do
    read -ra packages <<<"${modules[$host]}"
    read -ra flags <<<"$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs "${packages[@]}")"
    "$compiler" -std=c++20 -fPIC "$here/$host.cpp" "${flags[@]}" -Wl,-rpath,"$libraries" -o "$work/$host"
    run "$work/$host"
    echo "${finds[$host]}
          add_executable($host $host.cpp)
          target_link_libraries($host PRIVATE ${targets[$host]})" >>"$work/project/CMakeLists.txt"
done

cmake -G Ninja -S "$work/project" -B "$work/built" -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$compiler" >>"$work/log"
cmake --build "$work/built" >>"$work/log"
for host in "${@:3}"; do
    run "$work/built/$host"
done
