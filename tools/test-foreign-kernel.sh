#!/usr/bin/env bash
# Tests the SHA-256 kernel of the other architecture, ARMv8 on x86-64 and the reverse, under emulation.
# Installs the cross compiler and the emulator on Debian. Exits with 77 where the kernel cannot be run.
set -euo pipefail
cd "$(dirname "$0")/.."

case "$(uname -s) $(uname -m)" in
    "Linux x86_64")
        kernel="ARMv8 SHA-2"
        symbol=kArmSha256Kernel
        source=src/catalogue/hashing/sha256_kernel_arm.cpp
        flags_variable=arm_sha256_flags
        compiler=aarch64-linux-gnu-g++
        compiler_package=g++-aarch64-linux-gnu
        emulator=qemu-aarch64
        ;;
    "Linux aarch64")
        kernel="x86-64 SHA extensions"
        symbol=kX86Sha256Kernel
        source=src/catalogue/hashing/sha256_kernel_x86.cpp
        flags_variable=x86_sha256_flags
        compiler=x86_64-linux-gnu-g++
        compiler_package=g++-x86-64-linux-gnu
        emulator=qemu-x86_64
        ;;
    *)
        echo "No kernel was tested: this script emulates on Linux, x86-64 and 64-bit ARM, alone."
        exit 77
        ;;
esac

not_tested() {
    echo "$kernel: not tested, for $1"
    exit 77
}

is_there() {
    command -v "$1" > /dev/null 2>&1
}

install_missing() {
    local missing=""
    is_there "$compiler" || missing="$missing $compiler_package"
    is_there "$emulator" || missing="$missing qemu-user"
    is_there python3 || missing="$missing python3"
    if [ -z "$missing" ]; then
        return
    fi
    is_there apt-get || not_tested "these packages of Debian, or their like, are missing:$missing"
    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        as_root=sudo
    fi
    echo "Installing:$missing"
    # shellcheck disable=SC2086 # a list of package names
    if ! { $as_root apt-get update -qq && $as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends $missing > /dev/null; }; then
        not_tested "these packages could not be installed:$missing"
    fi
}

install_missing
work_dir=$(mktemp -d)
trap 'rm -rf "$work_dir"' EXIT
compile="$compiler -std=c++20 -O2 -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
    -Wold-style-cast -Werror -Isrc"
# The kernel has flags of its own, which are those of the build.
flags=$(sed -n "s/^set($flags_variable \(.*\))\$/\1/p" src/CMakeLists.txt)
if [ -z "$flags" ]; then
    echo "$kernel: src/CMakeLists.txt does not set $flags_variable in a line of its own" >&2
    exit 1
fi
# shellcheck disable=SC2086 # a list of flags
$compile $flags -c "$source" -o "$work_dir/kernel.o"
# shellcheck disable=SC2086 # a list of flags
$compile -static -DSEALKEEPER_SHA256_KERNEL=$symbol tests/kernel_emulation/kernel_states.cpp \
    src/catalogue/hashing/sha256_constants.cpp "$work_dir/kernel.o" -o "$work_dir/kernel_states"
echo "Testing under $emulator:"
python3 -B tests/kernel_emulation/check_kernel_states.py \
    "$emulator" -cpu max "$work_dir/kernel_states"
