#!/usr/bin/env bash
# check-arm-elf.sh READELF PATH...: every ELF file named, or found under a
# named directory, is a 32-bit ARM EABI version 5 hard-float object (ELF32,
# machine ARM, flags "Version5 EABI" and "hard-float ABI", floating-point
# arguments in VFP registers). Fails when a directory holds no ELF file.
set -euo pipefail
readelf="$1"; shift

is_elf() { [ "$(head -c 4 "$1" | od -An -c | tr -d ' ')" = "177ELF" ]; }

# Prints what is wrong with FILE; nothing when it is right.
check_file() {
  local header attributes
  header=$("$readelf" -h "$1")
  attributes=$("$readelf" -A "$1")
  grep -Eq 'Class:[[:space:]]+ELF32$' <<<"$header" || echo "not ELF32"
  grep -Eq 'Machine:[[:space:]]+ARM$' <<<"$header" || echo "machine is not ARM"
  grep -Eq 'Flags:.*Version5 EABI' <<<"$header" || echo "not Version5 EABI"
  grep -Eq 'Flags:.*hard-float ABI' <<<"$header" || echo "not hard-float ABI"
  grep -Eq 'Tag_ABI_VFP_args:[[:space:]]+VFP registers' <<<"$attributes" ||
    echo "floating-point arguments not in VFP registers"
}

files=()
for path in "$@"; do
  if [ -d "$path" ]; then
    found=0
    while IFS= read -r -d '' file; do
      if is_elf "$file"; then files+=("$file"); found=1; fi
    done < <(find "$path" -type f -print0)
    [ "$found" -eq 1 ] || { echo "FAIL $path: holds no ELF file"; exit 1; }
  else
    files+=("$path")
  fi
done

failed=0
for file in "${files[@]}"; do
  problems=$(check_file "$file")
  if [ -n "$problems" ]; then
    echo "FAIL $file: ${problems//$'\n'/, }"; failed=1
  else
    echo "ok   $file"
  fi
done
exit "$failed"
