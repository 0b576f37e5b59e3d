#!/usr/bin/env bash
# Configures the build of one preset: configure.sh PRESET [cmake arguments]. Keeps an existing build.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ $# -eq 0 ]; then
    echo "usage: configure.sh PRESET [cmake arguments]" >&2
    exit 1
fi
if [ "$(uname -s)" = Darwin ]; then
    # Homebrew keeps mbedtls@3 outside the default search path.
    mbedtls=$(brew --prefix mbedtls@3)
    export CMAKE_PREFIX_PATH="$mbedtls${CMAKE_PREFIX_PATH:+:$CMAKE_PREFIX_PATH}"
fi
cmake --preset "$@"
