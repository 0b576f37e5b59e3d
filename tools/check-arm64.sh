#!/usr/bin/env bash
# Builds this commit for ARM64 in a fresh Debian and runs its tests there: check-arm64.sh [SUITE]. Run it as root. The
# default suite is bookworm (Debian 12). Until it ends, this machine's kernel starts programs for ARM64 through the QEMU
# of that system. The log is kept in build/fresh.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$(id -u)" -ne 0 ] || ! command -v debootstrap > /dev/null 2>&1; then
    echo "check-arm64.sh must be run as root and needs debootstrap (apt-get install debootstrap)." >&2
    exit 2
fi
suite=${1:-bookworm}
log=$PWD/build/fresh/$suite-arm64.log
mkdir -p "$(dirname "$log")"
scratch=$(mktemp -d "${TMPDIR:-/tmp}/sealkeeper-arm64.XXXXXX")
root=$scratch/root
binfmt=$scratch/binfmt_misc
format=$(basename "$scratch")

clean_up() {
    if [ -e "$binfmt/$format" ]; then
        echo -1 > "$binfmt/$format"
    fi
    if mountpoint -q "$binfmt"; then
        umount "$binfmt"
    fi
    rm -rf --one-file-system "$scratch"
}
trap clean_up EXIT

# Has the kernel start ELF programs for ARM64 through QEMU, also in other root directories (F), with their own first
# argument (P), and those that the user may run but not read (O). The latest registration comes before those of the
# system.
register_emulator() {
    local magic='\x7fELF\x02\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\xb7\x00'
    local mask='\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'
    printf ':%s:M::%s:%s:%s:OPF' "$format" "$magic" "$mask" "$root/usr/bin/qemu-aarch64-static" > "$binfmt/register"
}

# What was skipped, and why: whole tests as CTest tells them, and parts of tests as they tell it themselves.
print_left_out() {
    echo "Left out:"
    sed -n '/^The following tests did not run:/,/^$/s/^\t *[0-9]* - /  /p' "$log"
    awk '
        /^[0-9]+\/[0-9]+ Test: / { test = $NF }
        /^[A-Za-z0-9_]+ \(.*\)/ { name = $2 }
        / \.\.\. skipped / { sub(/.* \.\.\. skipped /, ""); print "  " test ": " name " " $0 }
        /: Skipped$/ { getline; reason = $0 }
        /^\[  SKIPPED \] .* ms\)$/ { print "  " test ": " $4 " \047" reason "\047" }
        /^strace is not here/ { print "  " test ": " $0 }
    ' "$root/sealkeeper/build/dev/Testing/Temporary/LastTest.log" | sort
}

mkdir "$binfmt"
if ! mount -t binfmt_misc binfmt_misc "$binfmt"; then
    echo "check-arm64.sh needs a kernel with binfmt_misc, and the right to mount it." >&2
    exit 2
fi
echo "A fresh $suite, then the build and its tests; the log is $log"
tools/fresh-root.sh make "$suite" "$root"
git clone --quiet . "$root/sealkeeper"
status=0
{
    tools/fresh-root.sh run "$root" bash -c '
        set -e
        dpkg --add-architecture arm64
        apt-get update -qq
        apt-get install -y -qq --no-install-recommends cmake ninja-build openssl python3 qemu-user-static \
            g++-aarch64-linux-gnu binutils-multiarch libstdc++6:arm64 libmbedtls-dev:arm64 libpugixml-dev:arm64 \
            libgtest-dev:arm64 libcli11-dev nlohmann-json3-dev libxml2-utils file
    ' &&
    register_emulator &&
    # Tests configure builds too, so the environment names the toolchain. QEMU lacks two things that tests use. A limit
    # on address space leaves QEMU itself too little. And strace sees the system calls of QEMU, not those of the
    # program: it is not installed, so the fault sweeps let no system calls fail.
    tools/fresh-root.sh run "$root" bash -c '
        set -e
        cd /sealkeeper
        export CMAKE_TOOLCHAIN_FILE=$PWD/cmake/toolchains/aarch64-linux-gnu.cmake
        export SEALKEEPER_TEST_LACKS=address-space-limits
        cmake --preset dev -DSEALKEEPER_BUILD_BENCHMARKS=OFF -DSEALKEEPER_TEST_SHARDS=8 -DSEALKEEPER_TEST_STEP=7
        cmake --build --preset dev
        file build/dev/sealkeeper
        ctest --preset dev -j "$(getconf _NPROCESSORS_ONLN)" --no-tests=error --timeout 1200
    '
} > "$log" 2>&1 || status=$?
grep -E "tests passed|ARM aarch64" "$log" || true
if [ -e "$root/sealkeeper/build/dev/Testing/Temporary/LastTest.log" ]; then
    print_left_out | tee -a "$log"
fi
if [ "$status" -ne 0 ]; then
    tail -n 40 "$log"
fi
exit "$status"
