#!/usr/bin/env bash
# check-public-headers.sh INCLUDE_ROOT SOURCE_DIR: the headers installed under
# INCLUDE_ROOT are exactly the project's public ones (base/base/, plugin/json/
# and host/include/host/ without their private internal/ and common/
# folders), and no private folder is installed.
set -euo pipefail
include_root="$1"
source_dir="$2"

public_headers() {
  local folder="$1" as="$2"
  (cd "$source_dir/$folder" && find . -name '*.h' -not -path '*/internal/*' -not -path '*/common/*') | sed "s|^\.|$as|"
}
expected=$( { public_headers base/base base; public_headers plugin/json json;
              public_headers host/include/host host; } | sort)
installed=$(cd "$include_root" && find . -type f | sed 's|^\./||' | sort)

failed=0
if private=$(cd "$include_root" && find . -type d \( -name internal -o -name common \) | grep .); then
  echo "FAIL private folders installed: ${private//$'\n'/ }"; failed=1
fi
if [ "$expected" != "$installed" ]; then
  echo "FAIL installed headers differ from the public ones (< public, > installed):"
  diff <(echo "$expected") <(echo "$installed") || true
  failed=1
fi
[ "$failed" -eq 1 ] || echo "ok   $(wc -l <<<"$installed") public headers, no private folder"
exit "$failed"
