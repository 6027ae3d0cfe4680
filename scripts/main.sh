#!/usr/bin/env bash
# Sets up, builds Release and installs the libraries, the reference engine beside them and the
# command-line tool tavrin-dl into build/install; trains the example workspace from OpenCV's
# handwritten digits and runs tavrin-dl on the digits held out of training, one stream each, and
# measures its answers there with tavrin-dl eval, which writes an HTML report per stream.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build/release"
prefix="$root/build/install"
example="$build/example"
results="$build/results"

"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
configure "$build" -DCMAKE_BUILD_TYPE=Release -DTAVRIN_BUILD_BENCHMARKS=OFF
cmake --build "$build" --parallel "$(nproc)"
cmake --install "$build" --prefix "$prefix" >/dev/null
# The library loads the engine that lies beside it.
cmake --install "$build" --prefix "$prefix" --component ReferenceEngine >/dev/null
TAVRIN_BUILD_DIR="$build" "$root/scripts/example-workspace.sh" >/dev/null

rm -rf "$results"
for kind_stream in red:anomaly green:classify blue:read; do
    kind="${kind_stream%%:*}"
    stream="${kind_stream##*:}"
    echo "== $kind: tavrin-dl run --stream $stream"
    "$prefix/bin/tavrin-dl" run "$example/digits.yml" "$example/unseen/$kind" --stream "$stream" \
        --json "$results/$kind.jsonl" --csv "$results/$kind.csv" --overlay "$results/$kind"
    # The example's file names carry the truth: good_ or bad_ for red, the digits before _. The
    # report of eval has the answers of run and, beside them, the truth and the figures.
    "$prefix/bin/tavrin-dl" eval "$example/digits.yml" "$example/unseen/$kind" --stream "$stream" \
        --json "$results/$kind-eval.json" --plots "$results/$kind-plots" \
        --report "$results/$kind-report"
    echo
done
echo "workspace: $example/digits.yml (tavrin-dl info shows its tools and parameters)"
echo "results:   $results"
for kind in red green blue; do
    echo "report:    $results/$kind-report/index.html"
done
