#!/usr/bin/env bash
# Configures the build of one preset: configure.sh PRESET [cmake arguments]. Keeps an existing build.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=$1
shift
if [ "$(uname -s)" = Darwin ]; then
    # Homebrew keeps mbedtls@3 apart from the default search path.
    set -- "-DCMAKE_PREFIX_PATH=$(brew --prefix mbedtls@3)" "$@"
fi
cmake --preset "$preset" -G Ninja "$@"
