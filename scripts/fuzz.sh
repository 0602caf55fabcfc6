#!/usr/bin/env bash
# Builds the expression fuzz target with clang and runs it for the given
# number of seconds (default 60) on a copy of its seed corpus.
# Fails on the first crash, leak, timeout or sanitizer report; the input that
# caused it is left in build-fuzz/artifacts/.
# Usage: scripts/fuzz.sh [seconds]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds="${1:-60}"
build="${KALKORA_FUZZ_BUILD_DIR:-$root/build-fuzz}"

CXX=clang++ cmake -S "$root" -B "$build" -G Ninja \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DKALKORA_BUILD_FUZZ=ON -DKALKORA_BUILD_GUI=OFF -DKALKORA_BUILD_TESTS=OFF \
  -DKALKORA_BUILD_BENCH=OFF
cmake --build "$build" --target expression_fuzz

mkdir -p "$build/artifacts"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
for target in expression; do
  cp -r "$root/fuzz/corpus/$target" "$work/$target"
  echo "== ${target}_fuzz for ${seconds} s"
  # libFuzzer reports every new input; keep its output and show the summary.
  if ! "$build/fuzz/${target}_fuzz" "$work/$target" \
      -dict="$root/fuzz/expression.dict" \
      -max_total_time="$seconds" -timeout=1 -rss_limit_mb=2048 \
      -artifact_prefix="$build/artifacts/${target}-" -print_final_stats=1 \
      > "$build/${target}_fuzz.log" 2>&1; then
    tail -n 60 "$build/${target}_fuzz.log"
    echo "fuzzing: ${target}_fuzz failed (full output: $build/${target}_fuzz.log)" >&2
    exit 1
  fi
  grep -E '^(Done|stat::number_of_executed_units|stat::average_exec_per_sec|stat::peak_rss_mb)' \
    "$build/${target}_fuzz.log"
done
echo "fuzzing: no crash"
