#!/usr/bin/env bash
# Installs what is missing, builds the program and starts it. Arguments go to the program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/packages.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMORATA_BENCH=OFF > /dev/null
cmake --build build --target velmorata
exec ./build/velmorata "$@"
