#!/usr/bin/env bash
# Parses every sample document in examples/ and prints it re-serialized.
set -euo pipefail
build="${1:-build/dev}"
for doc in examples/*.json; do
  echo "== $doc"
  "$build/examples/json-roundtrip" "$doc"
done
