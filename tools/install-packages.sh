#!/usr/bin/env bash
# Installs what the build needs. Options add what the tests (--tests), the benchmarks (--bench),
# tools/mutate.sh (--mutation), tools/coverage.sh (--coverage), tools/look-at-page.sh (--browser)
# and cpack (--package) need. Uses apt on Debian and Homebrew on macOS. Does nothing if all of it is
# installed.
set -euo pipefail

with_tests=no
with_bench=no
with_mutation=no
with_coverage=no
with_browser=no
with_package=no
for option in "$@"; do
    case "$option" in
        --tests) with_tests=yes ;;
        --bench) with_bench=yes ;;
        --mutation) with_mutation=yes ;;
        --coverage) with_coverage=yes ;;
        --browser) with_browser=yes ;;
        --package) with_package=yes ;;
        *)
            echo "usage: install-packages.sh [--tests] [--bench] [--mutation] [--coverage] [--browser] [--package]" >&2
            exit 1
            ;;
    esac
done

install_on_debian() {
    local wanted="g++ cmake ninja-build libmbedtls-dev openssl libcli11-dev nlohmann-json3-dev libpugixml-dev scdoc"
    if [ "$with_tests" = yes ]; then
        wanted="$wanted libgtest-dev libbenchmark-dev python3 clang clang-format clang-tidy libclang-rt-dev strace libxml2-utils mandoc file"
    fi
    if [ "$with_bench" = yes ]; then
        wanted="$wanted libbenchmark-dev libssl-dev python3 rhash ncompress hashdeep time"
    fi
    if [ "$with_mutation" = yes ]; then
        wanted="$wanted python3-clang"
    fi
    if [ "$with_coverage" = yes ]; then
        wanted="$wanted gcovr"
    fi
    if [ "$with_browser" = yes ]; then
        wanted="$wanted chromium chromium-driver fonts-dejavu-core python3-selenium python3-html5lib"
    fi
    if [ "$with_package" = yes ]; then
        wanted="$wanted dpkg-dev file"
    fi
    local missing="" package
    for package in $wanted; do
        if ! dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed; then
            missing="$missing $package"
        fi
    done
    if [ -z "$missing" ]; then
        return
    fi
    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null 2>&1; then
            echo "Packages are missing, and only root can install them. There is no sudo here, so become root and run:" >&2
            echo "    apt-get update && apt-get install --no-install-recommends$missing" >&2
            exit 1
        fi
        as_root=sudo
    fi
    echo "Installing:$missing"
    $as_root apt-get update -qq
    # shellcheck disable=SC2086 # a list of package names
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
}

install_on_macos() {
    if [ "$with_browser" = yes ]; then
        echo "--browser knows Debian's packages alone." >&2
        exit 1
    fi
    if ! command -v brew >/dev/null 2>&1; then
        echo "Homebrew is needed to install cmake, ninja, mbedtls@3, cli11, nlohmann-json, pugixml and scdoc." >&2
        exit 1
    fi
    local wanted="cmake ninja mbedtls@3 cli11 nlohmann-json pugixml scdoc"
    if [ "$with_tests" = yes ]; then
        wanted="$wanted googletest google-benchmark clang-format"
    fi
    if [ "$with_bench" = yes ]; then
        wanted="$wanted google-benchmark openssl@3 rhash md5deep coreutils gnu-time"
    fi
    if [ "$with_coverage" = yes ]; then
        wanted="$wanted gcovr"
    fi
    local package
    for package in $wanted; do
        brew list "$package" >/dev/null 2>&1 || brew install "$package"
    done
}

if [ "$(uname -s)" = Darwin ]; then
    install_on_macos
elif command -v apt-get >/dev/null 2>&1; then
    install_on_debian
else
    echo "This script knows Debian and macOS. Elsewhere install a C++20 compiler, cmake, ninja," >&2
    echo "mbed TLS 2.28 or 3.6, CLI11, nlohmann-json and pugixml with their headers, openssl, for the" >&2
    echo "manual pages scdoc, and for the tests GoogleTest, Google Benchmark and python3." >&2
    exit 1
fi
