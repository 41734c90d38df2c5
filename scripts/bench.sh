#!/usr/bin/env bash
# Builds and runs every benchmark program; figures are printed as they come.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset default >/dev/null
cmake --build --preset default -j "$(nproc)"
mapfile -t benches < <(find build/default/bench -type f -executable -name 'bench_*' | sort)
for b in "${benches[@]}"; do
  echo "==== $(basename "$b")"
  "$b" "$@"
done
