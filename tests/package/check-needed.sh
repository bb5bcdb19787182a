#!/usr/bin/env bash
# check-needed.sh READELF LIBRARY: the library's NEEDED entries name only the
# standard runtime libraries (C++ runtime, maths, GCC support, C library,
# dynamic loader), no project library.
set -euo pipefail
readelf="$1"
library="$2"

needed=$("$readelf" -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p')
[ -n "$needed" ] || { echo "FAIL $library: no NEEDED entries read"; exit 1; }
allowed='^(libstdc\+\+\.so\.[0-9]+|libm\.so\.[0-9]+|libgcc_s\.so\.[0-9]+|libc\.so\.[0-9]+|ld-linux[-a-z0-9_]*\.so\.[0-9]+)$'
failed=0
while IFS= read -r entry; do
  if [[ "$entry" =~ $allowed ]]; then
    echo "ok   NEEDED $entry"
  else
    echo "FAIL NEEDED $entry: not a standard runtime library"; failed=1
  fi
done <<<"$needed"
exit "$failed"
