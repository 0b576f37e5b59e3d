#!/usr/bin/env bash
# Installs what the tests need, builds with warnings as errors, and runs every test: first with the
# default compiler, then under the sanitizers (with clang++ where it is installed, so that both
# compilers see all code).
set -euo pipefail
cd "$(dirname "$0")"

jobs=$(getconf _NPROCESSORS_ONLN)
tools/install-packages.sh --tests

run_preset() {
    local preset=$1
    shift
    echo "== $preset"
    tools/configure.sh "$preset" "$@" > "build-$preset.log" 2>&1 || { cat "build-$preset.log"; return 1; }
    rm -f "build-$preset.log"
    cmake --build --preset "$preset" -- -j "$jobs"
    ctest --preset "$preset" -j "$jobs" --output-on-failure --no-tests=error
}

# Other versions of clang-tidy have other opinions; the code is kept clean for this one.
tidy=OFF
if clang-tidy --version 2>/dev/null | grep -q 'version 14\.'; then
    tidy=ON
else
    echo "clang-tidy 14 is not here: its checks are left out of this run."
fi

run_preset dev -DSEALKEEPER_CLANG_TIDY=$tidy
if command -v clang++ >/dev/null 2>&1; then
    run_preset sanitize -DCMAKE_CXX_COMPILER=clang++
else
    run_preset sanitize
fi
