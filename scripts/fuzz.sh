#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a few seconds
# (argument: seconds per target, default 10). Crash inputs land in
# build/fuzz/artifacts/. A target's own libFuzzer flags (a -max_len large
# enough for whole files, say) stand in fuzz/flags/<target>, one per line.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-10}
# Absolute paths: a target that moves the current directory (opening a
# project does) must still find its corpus and artifact folders.
out="$PWD/build/fuzz"

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"
mkdir -p "$out/artifacts"
mapfile -t targets < <(find build/fuzz/fuzz -type f -executable -name 'fuzz_*' | sort)
if [ ${#targets[@]} -eq 0 ]; then
  echo "fuzz: no targets built"
  exit 0
fi
for target in "${targets[@]}"; do
  name=$(basename "$target")
  corpus="$out/corpus/$name"
  mkdir -p "$corpus"
  seeds="fuzz/seeds/$name"
  [ -d "$seeds" ] && cp -n "$seeds"/* "$corpus"/ 2>/dev/null || true
  flags=()
  [ -f "fuzz/flags/$name" ] && mapfile -t flags < <(grep -v '^#' "fuzz/flags/$name")
  echo "fuzz: $name for ${seconds}s ${flags[*]}"
  "$target" -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=0 "${flags[@]}" \
    -artifact_prefix="$out/artifacts/$name-" "$corpus" 2>"$out/$name.log" ||
    { tail -n 60 "$out/$name.log"; echo "fuzz: $name FAILED"; exit 1; }
done
echo "fuzz: ${#targets[@]} targets ran clean"
