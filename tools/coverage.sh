#!/usr/bin/env bash
# Measures which lines and branches of src/ the unit and fault tests run, prints a table by file, and fails if there are
# too few: coverage.sh [cmake arguments]. The limits are in tools/coverage/check_coverage.py. sealkeeper-inspect is left
# out, because its tests also run code of `sealkeeper`, which would count as covered.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-packages.sh --tests --coverage
jobs=$(getconf _NPROCESSORS_ONLN)
build=build/coverage
mkdir -p "$build"

tools/configure.sh coverage "$@" > "$build/configure.log" 2>&1 || { cat "$build/configure.log"; exit 1; }
cmake --build --preset coverage --target sealkeeper_unit_tests sealkeeper_thread_tests -- -j "$jobs"
# Data from earlier runs would be counted too.
find "$build" -name '*.gcda' -delete
ctest --preset coverage -j "$jobs" --no-tests=error
gcovr --root . --object-directory "$build" --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
    --json "$build/coverage.json" "$build"
python3 -B tools/coverage/check_coverage.py "$build/coverage.json"
