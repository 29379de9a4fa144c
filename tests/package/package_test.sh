#!/bin/bash
# Installs a build and compiles a host against it, once through pkg-config and once through CMake.
# Usage: package_test.sh BUILD-FOLDER COMPILER
set -euo pipefail
build=$1 compiler=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >"$work/log"
libraries=$(dirname "$(find "$work/prefix" -name libkortavin.so)")

read -ra flags <<<"$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs kortavin)"
"$compiler" -std=c++20 "$here/host.cpp" "${flags[@]}" -Wl,-rpath,"$libraries" -o "$work/host"
"$work/host"

mkdir "$work/project"
cp "$here/host.cpp" "$work/project"
cat >"$work/project/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(host LANGUAGES CXX)
find_package(kortavin REQUIRED)
add_executable(host host.cpp)
target_link_libraries(host PRIVATE kortavin::kortavin)
CMAKE
cmake -G Ninja -S "$work/project" -B "$work/built" -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_CXX_COMPILER="$compiler" >>"$work/log"
cmake --build "$work/built" >>"$work/log"
"$work/built/host"
