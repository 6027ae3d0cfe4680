#!/usr/bin/env bash
# Sets up, builds and installs the libraries, then builds the example consumer against the
# installed package and runs it.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build/release"
prefix="$root/build/install"

"$root/scripts/setup.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" --parallel "$(nproc)"
cmake --install "$build" --prefix "$prefix" >/dev/null
cmake -S "$root/examples/consumer" -B "$build/consumer" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$build/consumer" --parallel "$(nproc)"
"$build/consumer/tavrin_example" "$@"
