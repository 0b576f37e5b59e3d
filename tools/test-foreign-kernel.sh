#!/usr/bin/env bash
# Tests the SHA-256 kernels of the other architecture under emulation: 64-bit ARM on x86-64, and the reverse.
# Installs the cross compiler and the emulator on Debian. Exits with 77 if a kernel cannot be run.
set -euo pipefail
cd "$(dirname "$0")/.."

# One kernel per line: the end of its file name, its constant, the variable of its flags, and further sources.
case "$(uname -s) $(uname -m)" in
    "Linux x86_64")
        architecture="64-bit ARM"
        kernels="
            arm kArmSha256Kernel arm_flags
            portable kPortableSha256Kernel portable_flags"
        compiler=aarch64-linux-gnu-g++
        compiler_package=g++-aarch64-linux-gnu
        emulator=qemu-aarch64
        ;;
    "Linux aarch64")
        architecture="x86-64"
        kernels="
            sha_extensions kShaExtensionsSha256Kernel sha_extensions_flags x86_features.cpp
            avx512 kAvx512Sha256Kernel avx512_flags x86_features.cpp
            avx512 kAvx512ShortChainSha256Kernel avx512_flags x86_features.cpp
            avx2 kAvx2Sha256Kernel avx2_flags x86_features.cpp
            portable kPortableSha256Kernel portable_flags"
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
    echo "The kernels of $architecture: not tested, for $1"
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

compile="$compiler -std=c++20 -O2 -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
    -Wold-style-cast -Werror -Isrc"
sources=src/catalogue/hashing

# Builds and tests one kernel.
test_kernel() {
    local file=$1 symbol=$2 flags_variable=$3
    shift 3
    # The kernel is compiled with its own flags, which are those of the build.
    local flags
    flags=$(sed -n "s/^set($flags_variable \(.*\))\$/\1/p" src/CMakeLists.txt)
    if [ -z "$flags" ]; then
        echo "$file: src/CMakeLists.txt does not set $flags_variable in a line of its own" >&2
        return 1
    fi
    # shellcheck disable=SC2086 # a list of flags
    $compile $flags -c "$sources/sha256_kernel_$file.cpp" -o "$work_dir/kernel.o" || return 1
    # shellcheck disable=SC2086 # a list of flags
    $compile -static "-DSEALKEEPER_SHA256_KERNEL=$symbol" tests/kernel_emulation/kernel_states.cpp \
        "$sources/sha256_constants.cpp" "${@/#/$sources/}" "$work_dir/kernel.o" \
        -o "$work_dir/kernel_states" || return 1
    python3 -B tests/kernel_emulation/check_kernel_states.py \
        "$emulator" -cpu max "$work_dir/kernel_states"
}

install_missing
work_dir=$(mktemp -d)
trap 'rm -rf "$work_dir"' EXIT
echo "Testing the kernels of $architecture under $emulator:"
failed=0
skipped=0
while read -r -a kernel; do
    if [ "${#kernel[@]}" -eq 0 ]; then
        continue
    fi
    status=0
    test_kernel "${kernel[@]}" < /dev/null || status=$?
    case $status in
        0) ;;
        77) skipped=77 ;;
        *) failed=1 ;;
    esac
done <<< "$kernels"
if [ "$failed" -ne 0 ]; then
    exit 1
fi
exit "$skipped"
