#!/usr/bin/env bash
# Runs the plug-in inside tavrin-host on the sample documents: every example
# is parsed and printed re-serialized, the camera settings are converted to
# the framework's attribute-set text and read back through the legacy json::
# reader. Log lines appear on standard error.
set -euo pipefail
build="${1:-build/dev}"
host="$build/tools/tavrin-host/tavrin-host"
for doc in examples/*.json; do
  echo "== parse $doc"
  "$host" parse "$doc"
done
echo "== convert examples/camera.json"
"$host" convert examples/camera.json
echo "== legacy examples/camera.json"
"$host" legacy examples/camera.json
