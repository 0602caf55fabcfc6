#!/usr/bin/env bash
# Runs the core test suites under valgrind memcheck: any memory error or
# definite leak fails the run. Usage: scripts/memcheck.sh [build dir]
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build}"

"$PWD/scripts/install-deps.sh" --dev
if [[ ! -d "$build" ]]; then
  cmake -S . -B "$build" -G Ninja
fi
cmake --build "$build" --target test_expression test_linalg test_numeric

status=0
for t in expression linalg numeric; do
  echo "== memcheck: test_$t"
  valgrind --quiet --error-exitcode=99 --leak-check=full \
           --errors-for-leak-kinds=definite --show-leak-kinds=definite \
           "$build/tests/$t/test_$t" --gtest_brief=1 || status=1
done
exit $status
