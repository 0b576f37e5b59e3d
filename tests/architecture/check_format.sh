#!/usr/bin/env bash
# Checks that all C++ is formatted as .clang-format says. Exits with 77 (skipped) without clang-format
# 14: other versions format differently.
set -euo pipefail
cd "$(dirname "$0")/../.."

formatter=clang-format
if ! "$formatter" --version 2>/dev/null | grep -q 'version 14\.'; then
    echo "clang-format 14 is not here: the format was not checked."
    exit 77
fi
find src tests -name '*.h' -o -name '*.cpp' | sort | xargs "$formatter" --dry-run -Werror
