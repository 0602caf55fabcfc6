#!/usr/bin/env bash
# Builds Kalkora and runs every test suite (headless). Installs what is missing.
# Usage: scripts/test.sh [--sanitize]
set -euo pipefail
cd "$(dirname "$0")/.."

"$PWD/scripts/install-deps.sh"

build=build
extra=()
if [[ "${1:-}" == "--sanitize" ]]; then
  build=build-sanitize
  extra=(-DKALKORA_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug)
  export ASAN_OPTIONS="fast_unwind_on_malloc=0:detect_leaks=1"
  export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
fi

cmake -S . -B "$build" -G Ninja "${extra[@]}"
cmake --build "$build"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
