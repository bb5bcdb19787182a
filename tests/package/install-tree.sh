#!/usr/bin/env bash
# install-tree.sh CMAKE BUILD_DIR PREFIX: a fresh installation of the build
# into PREFIX (whatever was there before is removed first).
set -euo pipefail
cmake="$1"
build_dir="$2"
prefix="$3"
rm -rf "$prefix"
"$cmake" --install "$build_dir" --prefix "$prefix"
