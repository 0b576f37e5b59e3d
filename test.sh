#!/usr/bin/env bash
# Installs what the tests need, builds with warnings as errors, and runs every test: first with the
# default compiler, then under the sanitizers (with clang++ where it is installed, so that both
# compilers see all code), and what several threads do under ThreadSanitizer as well.
set -euo pipefail
cd "$(dirname "$0")"

tools/install-packages.sh --tests
jobs=$(getconf _NPROCESSORS_ONLN)
mkdir -p build

# build_and_test PRESET TARGET [cmake arguments]
build_and_test() {
    local preset=$1 target=$2
    shift 2
    local log=build/$preset-configure.log
    echo "== $preset"
    tools/configure.sh "$preset" "$@" > "$log" 2>&1 || { cat "$log"; return 1; }
    cmake --build --preset "$preset" --target "$target" -- -j "$jobs"
    ctest --preset "$preset" -j "$jobs" --no-tests=error
}

# Each test in a process of its own takes more time for the processes than for the tests.
build_and_test dev all -DSEALKEEPER_TEST_SHARDS=8

clang=""
if command -v clang++ >/dev/null 2>&1; then
    clang=-clang
fi
# Here the headers of all sources are checked once for many of them, not once for each.
# Other versions of clang-tidy have other opinions; the code is kept clean for this one.
tidy=OFF
case "$(clang-tidy --version 2>/dev/null || true)" in
    *"version 14."*) tidy=ON ;;
    *) echo "clang-tidy 14 is not here: its checks are left out of this run." ;;
esac
build_and_test sanitize$clang all -DSEALKEEPER_CLANG_TIDY=$tidy
build_and_test tsan$clang sealkeeper_thread_tests
