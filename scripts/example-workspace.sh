#!/usr/bin/env bash
# Builds the reference engine and its commands, cuts the example images out of OpenCV's sheet of
# handwritten digits (Debian's opencv-doc) and trains the example workspace from them.
# Prints where the engine, the workspace and the images held out for analysis are.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${TAVRIN_BUILD_DIR:-$root/build/release}"
example="$build/example"
sheet="$(dpkg -L opencv-doc | grep '/digits\.png$' | head -n 1)"

"$root/scripts/setup.sh"
. "$root/scripts/build-support.sh"
configure "$build" -DCMAKE_BUILD_TYPE=Release
cmake --build "$build" --parallel "$(nproc)" --target kelo_61_reference kelo_train kelo_example_data
rm -rf "$example"
"$build/reference_engine/kelo_example_data" "$sheet" "$example" >/dev/null
"$build/reference_engine/kelo_train" "$example/training" "$example/digits.yml"
echo "engine:    $build/reference_engine/engine/libkelo_61.so"
echo "workspace: $example/digits.yml"
echo "unseen:   $example/unseen/{red,green,blue}"
