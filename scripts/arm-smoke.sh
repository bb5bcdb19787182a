#!/usr/bin/env bash
# Runs the ARM tavrin-host under qemu-arm on every sample document in each of
# its modes. Where a native build is present (build/dev), every ARM run must
# give the native run's exit status and standard output; otherwise each run
# must end normally (0 success, 1 document refused) with a result on success.
# Usage: scripts/arm-smoke.sh [ARM_BUILD_DIR] [NATIVE_BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
arm_build="${1:-build/arm}"
native_build="${2:-build/dev}"
program=tools/tavrin-host/tavrin-host
qemu=(qemu-arm -L /usr/arm-linux-gnueabihf)

arm_host="$arm_build/$program"
[ -x "$arm_host" ] || { echo "arm-smoke: $arm_host was not built" >&2; exit 1; }
native_host="$native_build/$program"
[ -x "$native_host" ] || native_host=""

# The modes as --help lists them: two blanks, the name, a blank, the summary.
modes=$("${qemu[@]}" "$arm_host" --help | sed -n 's/^  \([a-z][a-z-]*\) .*/\1/p')
[ -n "$modes" ] || { echo "arm-smoke: tavrin-host --help lists no mode" >&2; exit 1; }

# Prints why the ARM run of MODE on DOC is wrong; nothing when it is right.
check_run() {
  local mode="$1" doc="$2" out status native_out native_status
  status=0; out=$("${qemu[@]}" "$arm_host" "$mode" "$doc" 2>/dev/null) || status=$?
  if [ -n "$native_host" ]; then
    native_status=0; native_out=$("$native_host" "$mode" "$doc" 2>/dev/null) || native_status=$?
    [ "$status" -eq "$native_status" ] || echo "exit status $status, native $native_status"
    [ "$out" == "$native_out" ] || echo "result differs from the native one"
  elif [ "$status" -gt 1 ]; then
    echo "exit status $status"
  elif [ "$status" -eq 0 ] && [ -z "$out" ]; then
    echo "no result"
  fi
}

passed=0
failed=0
for doc in examples/*.json; do
  for mode in $modes; do
    problem=$(check_run "$mode" "$doc")
    if [ -z "$problem" ]; then
      passed=$((passed + 1)); echo "arm-smoke: ok   $mode $doc"
    else
      failed=$((failed + 1)); echo "arm-smoke: FAIL $mode $doc: ${problem//$'\n'/; }" >&2
    fi
  done
done
echo "arm-smoke: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
