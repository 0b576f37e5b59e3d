#!/usr/bin/env bash
# Builds the program and its benchmarks, issues credentials from the development authority, and
# compares: compare.sh [--build-dir DIR] [options of compare.py]. See --help.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")

build=$root/build/bench
if [ "${1:-}" = --build-dir ] && [ $# -ge 2 ]; then
    mkdir -p "$2"
    build=$(cd "$2" && pwd)
    shift 2
fi
for argument in "$@"; do
    if [ "$argument" = --help ] || [ "$argument" = -h ]; then
        exec python3 -B "$here/compare.py" --build-dir "$build" --help
    fi
done

mkdir -p "$build"
log=$build/compare-build.log
if ! { "$root/tools/configure.sh" bench -B "$build" && cmake --build "$build"; } > "$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
"$root/tools/issue-credentials.sh" sealkeeper-bench "$build/credentials" --force > /dev/null
exec python3 -B "$here/compare.py" --build-dir "$build" "$@"
