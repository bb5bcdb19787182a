#!/usr/bin/env bash
# pkgconfig-consumer.sh PC_DIR FRAMEWORK_DIR SOURCE OUTPUT CXX [FLAG...] [-- RUNNER...]
# Builds SOURCE (tests/install/main.cpp) with one plain compiler line, taking
# the plug-in's compile and link flags from `pkg-config pluginjson` found in
# PC_DIR only, and the framework from FRAMEWORK_DIR (a real host process
# supplies its own); then runs it (through RUNNER in a cross build) and checks
# that the plug-in read and wrote back its document. PKG_CONFIG_SYSROOT_DIR,
# when set, is the root the .pc file lies in, as in a root file system image.
set -euo pipefail
pc_dir="$1" framework_dir="$2" source="$3" output="$4"; shift 4
compile=() runner=()
while [ $# -gt 0 ] && [ "$1" != "--" ]; do compile+=("$1"); shift; done
[ $# -eq 0 ] || { shift; runner=("$@"); }

export PKG_CONFIG_LIBDIR="$pc_dir" PKG_CONFIG_PATH=""
read -ra pluginjson <<<"$(pkg-config --cflags --libs pluginjson)"
libdir=$(pkg-config --variable=libdir pluginjson)
echo "pkg-config --cflags --libs pluginjson: ${pluginjson[*]}"
set -x
"${compile[@]}" -std=c++17 -Wall -Wextra -Werror "$source" -o "$output" \
  "${pluginjson[@]}" -L"$framework_dir" -ltavrin -Wl,-rpath,"$libdir:$framework_dir"
result=$("${runner[@]}" "$output")
set +x
expected='{"name":"consumer","sizes":[1,2,3],"ratio":16/9,"on":true}'
[ "$result" = "$expected" ] || { echo "FAIL consumer printed: $result"; exit 1; }
echo "ok   consumer printed $result"
