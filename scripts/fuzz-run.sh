#!/usr/bin/env bash
# Runs one libFuzzer target of build/fuzz for a number of seconds.
# Usage: scripts/fuzz-run.sh TARGET SECONDS
#
# The working corpus is fuzz/corpus-work/TARGET (kept between runs, not in
# version control); libFuzzer also reads the hand-written seeds, the saved
# regression inputs and, for the JSON targets, the project's conformance
# inputs and the shared benchmark corpus and test data. A crash, leak,
# sanitizer report or timeout stops the run with a non-zero status and leaves
# the input in build/fuzz/artifacts/TARGET/; copy it into
# fuzz/regressions/TARGET/ so that it replays in the ordinary test run.
set -euo pipefail
cd "$(dirname "$0")/.."

target="$1"
seconds="${2:-60}"
program="build/fuzz/fuzz/$target"
[ -x "$program" ] || { echo "$program is missing: run 'make fuzz-build' first" >&2; exit 2; }

work="fuzz/corpus-work/$target"
artifacts="build/fuzz/artifacts/$target"
mkdir -p "$work" "$artifacts"

corpus=("$work" "fuzz/regressions/$target")
if [ "$target" = fuzz_attrset ]; then
  corpus+=(fuzz/seeds/attrset)
else
  corpus+=(fuzz/seeds/json)
  for extra in tests/conformance tests/data/corpus tests/data/testdata; do
    [ -d "$extra" ] && corpus+=("$extra")
  done
fi

log="build/fuzz/logs/$target.log"
mkdir -p "$(dirname "$log")"
echo "== $target for ${seconds}s (log: $log)"
status=0
ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1}" \
UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}" \
"$program" -max_total_time="$seconds" -timeout=10 -max_len=16384 \
  -dict=fuzz/json.dict -print_final_stats=1 \
  -artifact_prefix="$artifacts/" "${corpus[@]}" >"$log" 2>&1 || status=$?

if [ "$status" -ne 0 ]; then
  tail -n 60 "$log"
  echo "$target found a fault (status $status); the input is in $artifacts/" >&2
  exit "$status"
fi
# The last status line (executions, coverage, features, corpus) and the
# final statistics.
grep -E '^#[0-9]+' "$log" | tail -n 1
grep -E '^stat::(number_of_executed_units|peak_rss_mb)' "$log"
