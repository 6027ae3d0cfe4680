#!/usr/bin/env bash
# Sets up, builds Release (the main job's build) and runs every benchmark program; each ends with
# the ratio it exists for, its two sides interleaved at random over repetitions, and all ratios
# end in one table. Arguments go to every program, e.g. --benchmark_repetitions=31.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build/release"

"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
configure "$build" -DCMAKE_BUILD_TYPE=Release -DTAVRIN_BUILD_BENCHMARKS=ON
cmake --build "$build" --parallel "$(nproc)"

failed=()
ratios="$(mktemp)"
trap 'rm -f "$ratios"' EXIT
for source in "$root"/bench/*Bench.cpp; do
    program="$(basename "$source" .cpp)"
    echo "== $program"
    "$build/bench/$program" "$@" | tee -a "$ratios" || failed+=("$program")
    echo
done

echo "| Ratio | Median | Spread (lowest to highest, repetitions) | Goal | |"
echo "|---|---|---|---|---|"
sed -n 's/^ratio \(.*\)$/\1 |/p' "$ratios"
if [ ${#failed[@]} -gt 0 ]; then
    echo "bench: failed: ${failed[*]}" >&2
    exit 1
fi
