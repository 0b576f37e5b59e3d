#!/usr/bin/env bash
# Builds this commit for ARM64 in a fresh Debian and runs its tests under QEMU: check-arm64.sh [SUITE]. Run it as
# root. The default suite is bookworm (Debian 12). The log is kept in build/fresh.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$(id -u)" -ne 0 ] || ! command -v debootstrap > /dev/null 2>&1; then
    echo "check-arm64.sh must be run as root and needs debootstrap (apt-get install debootstrap)." >&2
    exit 2
fi
suite=${1:-bookworm}
log=$PWD/build/fresh/$suite-arm64.log
mkdir -p "$(dirname "$log")"
root=$(mktemp -d "${TMPDIR:-/tmp}/sealkeeper-arm64.XXXXXX")
trap 'tools/fresh-root.sh remove "$root"' EXIT

echo "A fresh $suite, then the build and its tests; the log is $log"
tools/fresh-root.sh make "$suite" "$root"
git clone --quiet . "$root/sealkeeper"
status=0
tools/fresh-root.sh run "$root" bash -c '
    set -e
    dpkg --add-architecture arm64
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends cmake ninja-build openssl python3 qemu-user-static \
        g++-aarch64-linux-gnu libstdc++6:arm64 libmbedtls-dev:arm64 libpugixml-dev:arm64 libgtest-dev:arm64 \
        libcli11-dev nlohmann-json3-dev libxml2-utils strace file
    cd /sealkeeper
    cmake --preset dev --toolchain cmake/toolchains/aarch64-linux-gnu.cmake -DSEALKEEPER_BUILD_BENCHMARKS=OFF \
        -DSEALKEEPER_TEST_SHARDS=8 -DSEALKEEPER_TEST_STEP=7
    cmake --build --preset dev
    file build/dev/sealkeeper
    ctest --preset dev -j "$(getconf _NPROCESSORS_ONLN)" --no-tests=error --timeout 1200
' > "$log" 2>&1 || status=$?
grep -E "tests passed|ARM aarch64" "$log" || true
if [ "$status" -ne 0 ]; then
    tail -n 40 "$log"
fi
exit "$status"
