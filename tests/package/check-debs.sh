#!/usr/bin/env bash
# check-debs.sh BUILD_DIR ARCH [RUNNER...]: checks the Debian packages cpack
# wrote into BUILD_DIR/packages for the Debian architecture ARCH:
#   - names, version (the one the module's version text names), architecture
#     and dependencies (dpkg-deb --info);
#   - file lists (dpkg-deb --contents): the runtime package holds
#     libpluginjson.so only, the development package the public headers, the
#     CMake package and pluginjson.pc, the tools package tavrin-host and the
#     substitute framework in its own directory; no private header;
#   - the plug-in needs only the standard runtime libraries; in armhf
#     packages every ELF file is ARM EABI5 hard-float;
#   - unpacked into a scratch root (dpkg-deb -x): a plain compiler line with
#     pkg-config and a CMake project build against the development package
#     and run, and the packaged tavrin-host runs (through RUNNER, for example
#     qemu-arm, when the build machine cannot execute ARCH).
set -euo pipefail
build_dir=$(realpath "$1") arch="$2"; shift 2
runner=("$@")
source_dir=$(realpath "$(dirname "$0")/../..")
scripts="$source_dir/tests/package"
packages="$build_dir/packages"
scratch="$packages/check"
cache_value() { sed -n "s/^$1:[A-Z]*=//p" "$build_dir/CMakeCache.txt"; }

version=$(sed -n 's/.*"pluginjson@version:\([0-9]*\.[0-9]*\.[0-9]*\)\..*/\1/p' \
  "$source_dir/plugin/json/PluginJson.cpp")
runtime=libpluginjson1 development=libpluginjson-dev tools=pluginjson-tools
deb() { echo "$packages/$1_${version}_$arch.deb"; }

failed=0
fail() { echo "FAIL $*"; failed=1; }
ok() { echo "ok   $*"; }

# field PACKAGE FIELD EXPECTED-REGEX
field() {
  local value
  value=$(dpkg-deb --field "$(deb "$1")" "$2")
  if [[ "$value" =~ $3 ]]; then ok "$1 $2: $value"; else fail "$1 $2: '$value' is not /$3/"; fi
}

# files PACKAGE ALLOWED-REGEX REQUIRED...: every file matches, each required one is there.
files() {
  local package="$1" allowed="$2" list file; shift 2
  list=$(dpkg-deb --contents "$(deb "$package")" | awk '$1 !~ /^d/ {print $6}' | sed 's|^\./||')
  while IFS= read -r file; do
    [[ "$file" =~ ^($allowed)$ ]] || fail "$package holds $file"
    [[ ! "$file" =~ /(internal|common)/ ]] || fail "$package holds the private header $file"
  done <<<"$list"
  for file in "$@"; do grep -qxF "$file" <<<"$list" || fail "$package lacks $file"; done
  ok "$package: $(wc -l <<<"$list") files"
}

for package in $runtime $development $tools; do
  [ -f "$(deb $package)" ] || { fail "no package $(deb $package)"; exit 1; }
  field $package Package "^$package$"
  field $package Version "^$version$"
  field $package Architecture "^$arch$"
done
pinned="$runtime \(= ${version//./\\.}\)"
field $runtime Depends '^libc6 \(>= [0-9.]+\), libgcc-s1, libstdc\+\+6( \(>= [0-9]+\))?$'
field $development Depends "^$pinned$"
field $tools Depends "^$pinned, libc6 "

cmake_dir=usr/lib/cmake/TavrinPluginJson
files $runtime 'usr/lib/libpluginjson\.so' usr/lib/libpluginjson.so
files $development "usr/include/pluginjson/(base|json)/.*\.h|$cmake_dir/TavrinPluginJson(Config|ConfigVersion|Targets|Targets-[a-z]+)\.cmake|usr/lib/pkgconfig/pluginjson\.pc" \
  $cmake_dir/TavrinPluginJsonConfig.cmake $cmake_dir/TavrinPluginJsonTargets.cmake usr/lib/pkgconfig/pluginjson.pc
files $tools "usr/bin/tavrin-host|usr/lib/tavrin-host/libtavrin\.so|usr/include/pluginjson/host/.*\.h|$cmake_dir/TavrinHostTargets(-[a-z]+)?\.cmake" \
  usr/bin/tavrin-host usr/lib/tavrin-host/libtavrin.so $cmake_dir/TavrinHostTargets.cmake

rm -rf "$scratch"
root="$scratch/root"
mkdir -p "$root"
for package in $runtime $development $tools; do dpkg-deb -x "$(deb $package)" "$root"; done
bash "$scripts/check-public-headers.sh" "$root/usr/include/pluginjson" "$source_dir" || failed=1
bash "$scripts/check-needed.sh" readelf "$root/usr/lib/libpluginjson.so" || failed=1
if [ "$arch" = armhf ]; then bash "$scripts/check-arm-elf.sh" readelf "$root" || failed=1; fi

out=$(echo '{"packaged":[1,2]}' | "${runner[@]}" "$root/usr/bin/tavrin-host" parse -) || true
[ "$out" = '{"packaged":[1,2]}' ] && ok "packaged tavrin-host parse: $out" ||
  fail "packaged tavrin-host parse printed '$out'"

read -ra compiler <"$packages/consumer-compiler"
PKG_CONFIG_SYSROOT_DIR="$root" bash "$scripts/pkgconfig-consumer.sh" \
  "$root/usr/lib/pkgconfig" "$root/usr/lib/tavrin-host" "$source_dir/tests/install/main.cpp" \
  "$scratch/pkgconfig-consumer" "${compiler[@]}" -- "${runner[@]}" ||
  failed=1

consumer_options=(-DTavrinPluginJson_DIR="$root/$cmake_dir")
toolchain=$(cache_value CMAKE_TOOLCHAIN_FILE)
[ -z "$toolchain" ] || consumer_options+=(-DCMAKE_TOOLCHAIN_FILE="$toolchain")
ctest --build-and-test "$source_dir/tests/install" "$scratch/cmake-consumer" \
  --build-generator Ninja --build-options "${consumer_options[@]}" \
  --test-command ctest --output-on-failure --no-tests=error >"$scratch/cmake-consumer.log" 2>&1 &&
  ok "CMake consumer built against the unpacked packages and ran" ||
  { cat "$scratch/cmake-consumer.log"; fail "CMake consumer (log above)"; }

[ "$failed" -eq 0 ] && echo "packages for $arch: all checks passed"
exit "$failed"
