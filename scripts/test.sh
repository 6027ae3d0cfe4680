#!/usr/bin/env bash
# Sets up, builds everything with AddressSanitizer and UndefinedBehaviorSanitizer, runs all tests.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${TAVRIN_TEST_BUILD_DIR:-$root/build/test}"

"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
configure "$build" -DCMAKE_BUILD_TYPE=Debug -DTAVRIN_BUILD_TESTS=ON -DTAVRIN_SANITIZE=ON \
    -DTAVRIN_BUILD_BENCHMARKS=ON
cmake --build "$build" --parallel "$(nproc)"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)"
