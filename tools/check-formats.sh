#!/usr/bin/env bash
# Compiles the definitions of docs/formats with the Kaitai Struct compiler, reads files that
# sealkeeper writes and the test vectors with the result, and compares that with what
# sealkeeper-inspect shows: check-formats.sh [BUILD_DIR]. Needs node, npm and its registry, and a
# build; the default is that of the preset "demo".
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build/demo}
for program in node npm python3; do
    if ! command -v "$program" > /dev/null; then
        echo "$program is not here. On Debian: apt install npm python3" >&2
        exit 1
    fi
done
for program in sealkeeper sealkeeper-inspect; do
    if [ ! -x "$build/$program" ]; then
        echo "There is no $build/$program. Build it, or name the directory of another build." >&2
        exit 1
    fi
done

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

npm install --prefix "$scratch" --no-audit --no-fund --loglevel error \
    kaitai-struct-compiler@0.11.0 kaitai-struct@0.11.0 js-yaml@4 > /dev/null
mkdir "$scratch/readers"
cp docs/formats/SealkeeperUnscramble.js "$scratch/node_modules/"
export NODE_PATH="$scratch/node_modules"
node tools/formats/compile_formats.js "$scratch/readers" docs/formats/*.ksy
python3 -B tools/formats/compare_formats.py "$build" "$scratch/readers"
