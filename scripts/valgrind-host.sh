#!/usr/bin/env bash
# Runs tavrin-host under valgrind in each of its modes on the benchmark
# corpus documents, the project's sample documents and malformed inputs (the
# fuzz seeds and regressions, and the conformance corpora's documents, which
# reach every failure message of the readers). Any memory error or leak fails
# the run.
# Usage: scripts/valgrind-host.sh [BUILD_DIR]   (default build/dev)
#
# valgrind reports its findings with exit status 99: tavrin-host itself
# exits with 1 when it refuses a document, which is expected here.
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/dev}"
host="$build/tools/tavrin-host/tavrin-host"
[ -x "$host" ] || { echo "$host is missing: build the dev preset first" >&2; exit 2; }

inputs=()
for dir in tests/data/corpus examples fuzz/seeds/json fuzz/regressions/fuzz_node_deserialize \
           fuzz/regressions/fuzz_convert; do
  [ -d "$dir" ] || continue
  while IFS= read -r -d '' file; do inputs+=("$file"); done \
    < <(find "$dir" -type f ! -name '.*' ! -name '*.md' -print0 | sort -z)
done
for dir in tests/conformance/parser tests/conformance/legacy; do
  while IFS= read -r -d '' file; do inputs+=("$file"); done \
    < <(find "$dir" -type f -name '*.json' -print0 | sort -z)
done

modes=$("$host" --help | awk '/^modes:/ {on = 1; next} on && NF == 0 {exit} on {print $1}')
# One valgrind run per mode and input, two at a time; each prints its
# findings and a line "FAIL" when it has any.
export host build
check_one() {
  local mode="$1" input="$2" log status=0
  log=$(mktemp)
  valgrind --quiet --error-exitcode=99 --leak-check=full \
    "$host" "$mode" "$input" >/dev/null 2>"$log" || status=$?
  if [ "$status" -eq 99 ] || [ "$status" -gt 2 ]; then
    echo "valgrind: $mode $input (status $status)"
    grep '^==' "$log" || tail -n 20 "$log"
    echo FAIL
  fi
  rm -f "$log"
}
export -f check_one

report=$(for mode in $modes; do
  for input in "${inputs[@]}"; do printf '%s\0%s\0' "$mode" "$input"; done
done | xargs -0 -n 2 -P 2 bash -c 'check_one "$0" "$1"')
runs=$(( $(echo $modes | wc -w) * ${#inputs[@]} ))
failed=$(grep -c '^FAIL$' <<<"$report" || true)
[ -n "$report" ] && echo "$report" >&2
echo "valgrind: $runs runs of tavrin-host ($(echo $modes | wc -w) modes), $failed with findings"
[ "$failed" -eq 0 ]
