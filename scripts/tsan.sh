#!/usr/bin/env bash
# Builds the libraries, the test engine and the thread stress test with ThreadSanitizer in a
# build of their own, and runs the stress test with SIZE rounds per thread (default 3).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
build="${TAVRIN_TSAN_BUILD_DIR:-$root/build/tsan}"
rounds="${1:-3}"

configure "$build" -DCMAKE_BUILD_TYPE=Debug -DTAVRIN_BUILD_TESTS=ON -DTAVRIN_SANITIZE_THREAD=ON \
    -DTAVRIN_BUILD_REFERENCE_ENGINE=OFF -DTAVRIN_BUILD_CLI=OFF
cmake --build "$build" --target stress_tests --parallel "$(nproc)"
export TSAN_OPTIONS="halt_on_error=1:second_deadlock_stack=1:exitcode=66"
TAVRIN_STRESS_ROUNDS="$rounds" "$build/tests/stress_tests"
