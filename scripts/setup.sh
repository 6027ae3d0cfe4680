#!/usr/bin/env bash
# Installs every Debian package the project needs. Idempotent; run as root.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config
    librttr-dev libcereal-dev libtinyxml2-dev libboost-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libopencv-core-dev libopencv-imgproc-dev libopencv-imgcodecs-dev libopencv-ml-dev
    libcli11-dev nlohmann-json3-dev
    pybind11-dev python3-dev python3-numpy python3-pytest
    chromium chromium-driver python3-selenium
    clang-14 libclang-rt-14-dev lld
    ccache
    opencv-doc
    parallel
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
        missing+=("$package")
done

if [ ${#missing[@]} -gt 0 ]; then
    if [ "$(id -u)" -ne 0 ]; then
        echo "setup: run as root to install: ${missing[*]}" >&2
        exit 1
    fi
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
