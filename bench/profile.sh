#!/usr/bin/env bash
# Instruction profile of one benchmark under callgrind: counts are the same
# from run to run, even on a busy machine, where wall-clock timings are not.
# Usage: bench/profile.sh REGEX [PROGRAM]
#   REGEX    a --benchmark_filter matching one benchmark, e.g. '^parse/tavrin/citm'
#   PROGRAM  tavrin_bench (default) or tavrin_bench_memory
# Prints the total instructions of one timed iteration and the
# functions that execute most of them; the raw profile stays in
# build/bench/profile/ for callgrind_annotate or kcachegrind.
set -euo pipefail
filter="$1"
program="${2:-tavrin_bench}"
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$root/build/bench/profile"
mkdir -p "$out"
"$root/scripts/deps.sh" valgrind
file="$out/$(echo "$filter" | tr -c 'A-Za-z0-9._-' '_').callgrind"
valgrind --tool=callgrind --callgrind-out-file="$file" \
  --toggle-collect='*Timed*' --dump-instr=no \
  "$root/build/bench/bench/$program" --benchmark_filter="$filter" --benchmark_min_time=0 \
  > "$out/last-run.txt" 2>&1
callgrind_annotate --inclusive=no "$file" 2>/dev/null | sed -n '20,45p' | cut -c1-220
