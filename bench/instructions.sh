#!/usr/bin/env bash
# Instructions per parse and per serialize of each benchmark document, for
# our Node, RapidJSON and nlohmann/json, counted by callgrind (one timed
# iteration each). The counts repeat exactly from run to run, so they compare
# the libraries' work where wall-clock timings on a shared machine do not;
# they leave out cache and memory effects. Prints INSTRUCTIONS.md: millions
# of instructions, and each peer relative to ours.
# Usage: bench/instructions.sh > bench/INSTRUCTIONS.md   (after the bench preset is built)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
libraries=(tavrin rapidjson nlohmann)
documents=(canada.json citm_catalog.json twitter.json integers records rings)
count() {
  "$root/bench/profile.sh" "^$1\$" | awk '/PROGRAM TOTALS/ { gsub(",", "", $1); print $1 }'
}
cat <<'HEADER'
# Instruction counts

Written by `bench/instructions.sh` (part of `make bench`; callgrind, one iteration each,
the tree's release included in a parse): millions of instructions, in brackets the peer
relative to ours (below 1 means fewer instructions than ours).

HEADER
printf '| workload | document |'
printf ' %s |' "${libraries[@]}"
echo
echo "|---|---|$(printf -- '---|%.0s' "${libraries[@]}")"
for workload in parse serialize; do
  for doc in "${documents[@]}"; do
    row="| $workload | $doc |"
    ours=""
    for lib in "${libraries[@]}"; do
      n=$(count "$workload/$lib/$doc")
      if [ -z "$ours" ]; then
        ours=$n
        row+=" $(awk -v n="$n" 'BEGIN { printf "%.1fM", n / 1e6 }') |"
      else
        row+=" $(awk -v n="$n" -v o="$ours" 'BEGIN { printf "%.1fM (%.2fx)", n / 1e6, n / o }') |"
      fi
    done
    echo "$row"
  done
done
