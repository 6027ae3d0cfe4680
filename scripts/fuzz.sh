#!/usr/bin/env bash
# Usage: scripts/fuzz.sh [SECONDS [TARGET...]]
# Builds the fuzz targets with clang and libFuzzer in a build of their own (only the libraries,
# the test engine and the targets) and runs each target named, all four by default, for SECONDS
# (default 10), starting from its seeds in fuzz/corpus. New inputs collect in build/fuzz/corpus;
# a target that finds something leaves the input in build/fuzz/findings/<target>/, and the
# script fails once every target has run.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
build="${TAVRIN_FUZZ_BUILD_DIR:-$root/build/fuzz}"
seconds="${1:-10}"
targets=(ResultDocument CatalogueListing ParameterText Archive)
[ $# -le 1 ] || targets=("${@:2}")

configure "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_C_COMPILER=clang-14 \
    -DCMAKE_CXX_COMPILER=clang++-14 -DTAVRIN_BUILD_FUZZERS=ON -DTAVRIN_BUILD_TESTS=OFF \
    -DTAVRIN_BUILD_REFERENCE_ENGINE=OFF -DTAVRIN_BUILD_CLI=OFF
cmake --build "$build" --target "${targets[@]/#/fuzz_}" --parallel "$(nproc)"

# An input of at most 16 KiB may take no single allocation beyond 96 MiB, nor 2 GiB in all.
failed=()
for target in "${targets[@]}"; do
    findings="$build/findings/$target"
    rm -rf "$findings"
    mkdir -p "$build/corpus/$target" "$findings"
    status=0
    "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -max_len=16384 -malloc_limit_mb=96 \
        -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$findings/" \
        "$build/corpus/$target" "$root/fuzz/corpus/$target" >"$findings.log" 2>&1 || status=$?
    runs=$(grep -o 'number_of_executed_units: *[0-9]*' "$findings.log" | grep -o '[0-9]*$' || echo 0)
    echo "fuzz: $target, $runs runs in ${seconds}s"
    if [ "$status" -ne 0 ] || ls "$findings"/* >/dev/null 2>&1; then
        grep -E "ERROR|SUMMARY|runtime error|terminate|what\(\)" "$findings.log" | head -n 5 >&2
        echo "fuzz: $target failed; its input is kept in $findings, the log in $findings.log" >&2
        failed+=("$target")
    fi
done
[ ${#failed[@]} -eq 0 ] || { echo "fuzz: failed: ${failed[*]}" >&2; exit 1; }
