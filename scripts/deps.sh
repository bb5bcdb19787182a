#!/usr/bin/env bash
# Installs the Debian packages a make target needs, when they are missing.
# Usage: scripts/deps.sh GROUP...   (groups: base arm package fuzz bench valgrind locales)
set -euo pipefail

packages_for() {
  case "$1" in
    base) echo "cmake ninja-build g++ libgtest-dev libbenchmark-dev python3 locales binutils" ;;
    arm) echo "g++-arm-linux-gnueabihf qemu-user binutils-arm-linux-gnueabihf" ;;
    package) echo "dpkg-dev pkgconf" ;;
    fuzz) echo "clang libclang-rt-14-dev" ;;
    bench) echo "rapidjson-dev nlohmann-json3-dev libjsoncpp-dev libsimdjson-dev python3-matplotlib" ;;
    valgrind) echo "valgrind" ;;
    locales) echo "locales" ;;
    *) echo "unknown package group: $1" >&2; exit 2 ;;
  esac
}

missing=()
for group in "$@"; do
  for pkg in $(packages_for "$group"); do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "ok installed" || missing+=("$pkg")
  done
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
