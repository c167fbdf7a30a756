#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/packages.sh
cmake -S . -B build-tests -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build-tests
cd build-tests
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)"
