#!/usr/bin/env bash
# Measures which lines and branches of src/ the unit and fault tests run, prints them for each file, and fails where too
# few are: coverage.sh [cmake arguments]. tools/coverage/check_coverage.py says how many must be.
# sealkeeper-inspect is left out: its tests run code of `sealkeeper`, too, which would count as run.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-packages.sh --tests --coverage
jobs=$(getconf _NPROCESSORS_ONLN)
build=build/coverage
mkdir -p "$build"

tools/configure.sh coverage "$@" > "$build/configure.log" 2>&1 || { cat "$build/configure.log"; exit 1; }
cmake --build --preset coverage --target sealkeeper_unit_tests sealkeeper_thread_tests -- -j "$jobs"
# What earlier runs left would count, too.
find "$build" -name '*.gcda' -delete
ctest --preset coverage -j "$jobs" --no-tests=error
gcovr --root . --object-directory "$build" --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
    --json "$build/coverage.json" "$build"
python3 -B tools/coverage/check_coverage.py "$build/coverage.json"
