#!/usr/bin/env bash
# A longer run of the damaged-file test before a release: the same kinds of damage as CI's, with
# many more rounds (the seed is fixed, so a round that fails fails again). Run after tools/test.sh.
#   bash tools/fuzz.sh [ROUNDS]     (default 400 per file)
set -euo pipefail
top="$(cd "$(dirname "$0")/.." && pwd)"
build="$top/build-tests"
VELMORATA_FUZZ_ROUNDS="${1:-400}" QT_QPA_PLATFORM=offscreen VELMORATA_BINARY="$build/velmorata" \
  VELMORATA_TEST_DATA="$top/tests/data" "$build/tests/maintenance_DamagedFiles"
