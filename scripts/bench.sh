#!/usr/bin/env bash
# Sets up, builds Release (the main job's build) and runs every benchmark program; each ends with
# the ratio it exists for. Arguments go to every program, e.g. --benchmark_repetitions=5.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build/release"

"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
configure "$build" -DCMAKE_BUILD_TYPE=Release -DTAVRIN_BUILD_BENCHMARKS=ON
cmake --build "$build" --parallel "$(nproc)"

failed=()
for source in "$root"/bench/*Bench.cpp; do
    program="$(basename "$source" .cpp)"
    echo "== $program"
    "$build/bench/$program" "$@" || failed+=("$program")
    echo
done
if [ ${#failed[@]} -gt 0 ]; then
    echo "bench: failed: ${failed[*]}" >&2
    exit 1
fi
