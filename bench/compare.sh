#!/usr/bin/env bash
# Builds the program and its benchmarks, issues credentials from the development authority, and
# compares: compare.sh [--build-dir DIR] [options of compare.py]. See --help.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")

build=$root/build/bench
help=no
options=()
while [ $# -gt 0 ]; do
    case "$1" in
        --build-dir)
            [ $# -ge 2 ] || { echo "compare.sh: --build-dir needs a directory" >&2; exit 2; }
            mkdir -p "$2"
            build=$(cd "$2" && pwd)
            shift
            ;;
        --build-dir=*)
            set -- --build-dir "${1#*=}" "${@:2}"
            continue
            ;;
        --help | -h) help=yes ;;
        *) options+=("$1") ;;
    esac
    shift
done
# Old versions of bash treat an empty array as unset.
compare=(python3 -B "$here/compare.py" --build-dir "$build" ${options[@]+"${options[@]}"})
if [ "$help" = yes ]; then
    exec "${compare[@]}" --help
fi

mkdir -p "$build"
log=$build/compare-build.log
if ! { "$root/tools/configure.sh" bench -B "$build" && cmake --build "$build"; } > "$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
"$root/tools/issue-credentials.sh" sealkeeper-bench "$build/credentials" --force > /dev/null
exec "${compare[@]}"
