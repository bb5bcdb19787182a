#!/usr/bin/env bash
# Runs tavrin-host under valgrind in each of its modes on the benchmark
# corpus documents, the project's sample documents and a set of malformed
# inputs. Any memory error or leak fails the run.
# Usage: scripts/valgrind-host.sh [BUILD_DIR]   (default build/dev)
#
# valgrind reports its findings with exit status 99: tavrin-host itself
# exits with 1 when it refuses a document, which is expected here.
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build/dev}"
host="$build/host/program/tavrin-host"
[ -x "$host" ] || { echo "$host is missing: build the dev preset first" >&2; exit 2; }

inputs=()
for dir in ../shared/corpus examples fuzz/seeds/json ../shared/testdata/jsonchecker \
           fuzz/regressions/fuzz_node_deserialize \
           fuzz/regressions/fuzz_convert; do
  [ -d "$dir" ] || continue
  while IFS= read -r -d '' file; do inputs+=("$file"); done \
    < <(find "$dir" -type f ! -name '.*' ! -name '*.md' -print0 | sort -z)
done

modes=$("$host" --help | awk '/^modes:/ {on = 1; next} on && NF == 0 {exit} on {print $1}')
failed=0
checked=0
for mode in $modes; do
  for input in "${inputs[@]}"; do
    status=0
    valgrind --quiet --error-exitcode=99 --leak-check=full \
      "$host" "$mode" "$input" >/dev/null 2>"$build/valgrind.log" || status=$?
    checked=$((checked + 1))
    if [ "$status" -eq 99 ] || [ "$status" -gt 2 ]; then
      echo "valgrind: $mode $input (status $status)" >&2
      grep '^==' "$build/valgrind.log" >&2 || tail -n 20 "$build/valgrind.log" >&2
      failed=$((failed + 1))
    fi
  done
done
echo "valgrind: $checked runs of tavrin-host ($(echo $modes | wc -w) modes), $failed with findings"
[ "$failed" -eq 0 ]
