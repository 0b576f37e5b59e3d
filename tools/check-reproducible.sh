#!/usr/bin/env bash
# Builds the commit of HEAD twice, in folders of different names, and fails unless the installed
# files and the packages are identical: check-reproducible.sh [cmake arguments].
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-packages.sh
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
scratch=$(mktemp -d "${TMPDIR:-/tmp}/sealkeeper-reproducible.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

# build FOLDER [cmake arguments]: puts the installed files and the package into FOLDER.out.
build() {
    local folder=$scratch/$1
    shift
    git clone --quiet . "$folder"
    cmake -S "$folder" -B "$folder/build" -G Ninja --preset demo "$@"
    cmake --build "$folder/build"
    cmake --install "$folder/build" --strip --prefix "$folder.out/installed"
    if command -v dpkg-deb > /dev/null 2>&1; then
        (cd "$folder/build" && cpack && cp ./*.deb "$folder.out/")
    fi
}

for folder in one another/and/longer; do
    echo "== $folder"
    build "$folder" "$@" > "$scratch/log" 2>&1 || { cat "$scratch/log"; exit 1; }
done
if ! diff -r "$scratch/one.out" "$scratch/another/and/longer.out"; then
    echo "The two builds differ." >&2
    exit 1
fi
(cd "$scratch/one.out" && find . -type f \( -path './installed/bin/*' -o -name '*.deb' \) -exec sha256sum {} +)
echo "Two builds in different folders are the same."
