#!/usr/bin/env bash
# Installs what the tests need, builds with warnings as errors, and runs every test: first with the
# default compiler, then under the sanitizers (with clang++ where it is installed, so that both
# compilers see all code).
set -euo pipefail
cd "$(dirname "$0")"

tools/install-packages.sh --tests
jobs=$(getconf _NPROCESSORS_ONLN)
mkdir -p build

build_and_test() {
    local preset=$1
    shift
    local log=build/$preset-configure.log
    echo "== $preset"
    tools/configure.sh "$preset" "$@" > "$log" 2>&1 || { cat "$log"; return 1; }
    cmake --build --preset "$preset" -- -j "$jobs"
    ctest --preset "$preset" -j "$jobs" --no-tests=error
}

# Other versions of clang-tidy have other opinions; the code is kept clean for this one.
tidy=OFF
case "$(clang-tidy --version 2>/dev/null || true)" in
    *"version 14."*) tidy=ON ;;
    *) echo "clang-tidy 14 is not here: its checks are left out of this run." ;;
esac
build_and_test dev -DSEALKEEPER_CLANG_TIDY=$tidy

sanitize=sanitize
if command -v clang++ >/dev/null 2>&1; then
    sanitize=sanitize-clang
fi
build_and_test $sanitize
