#!/usr/bin/env bash
# Tries this commit as somebody would who has just installed Debian and git: check-fresh.sh [SUITE...]. Run it
# as root. The default suites are bookworm (Debian 12) and trixie (Debian 13). For each suite it runs the
# README's two commands in a fresh system, makes the package there, installs that in a second fresh system,
# and follows the guide with the installed programs. Takes half an hour per suite. Logs are kept in
# build/fresh.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$(id -u)" -ne 0 ] || ! command -v debootstrap > /dev/null 2>&1; then
    echo "check-fresh.sh must be run as root and needs debootstrap (apt-get install debootstrap)." >&2
    exit 2
fi
suites=("$@")
if [ ${#suites[@]} -eq 0 ]; then
    suites=(bookworm trixie)
fi
logs=$PWD/build/fresh
mkdir -p "$logs"
scratch=$(mktemp -d "${TMPDIR:-/tmp}/sealkeeper-fresh.XXXXXX")
trap 'rm -rf --one-file-system "$scratch"' EXIT
failed=0

# step SUITE NAME COMMAND...: runs the command and shows one line for it and, if it failed, the end of its
# log.
step() {
    local suite=$1 name=$2 log=$logs/$1-$2.log begin=$SECONDS
    shift 2
    if "$@" > "$log" 2>&1; then
        printf '%-10s %-10s ok      %4d s\n' "$suite" "$name" $((SECONDS - begin))
    else
        printf '%-10s %-10s FAILED  %4d s  %s\n' "$suite" "$name" $((SECONDS - begin)) "$log"
        tail -n 15 "$log"
        failed=1
        return 1
    fi
}

# Runs a command in the system with the sources.
in_source() {
    tools/fresh-root.sh run "$scratch/$1" bash -c "cd /sealkeeper && $2"
}

make_package() {
    in_source "$1" "tools/install-packages.sh --package && cmake build/demo > /dev/null &&
        cmake --build build/demo && cd build/demo && cpack" &&
        cp "$scratch/$1"/sealkeeper/build/demo/*.deb "$scratch/$1-installed/root/"
}

# Uses a second system, so that only the dependencies of the package are there.
install_package() {
    tools/fresh-root.sh run "$scratch/$1-installed" bash -c "apt-get update -qq && apt-get install -y /root/*.deb &&
        sealkeeper-inspect --version && sealkeeper -h | head -n 1 && test -e /usr/share/man/man1/sealkeeper.1.gz &&
        /usr/share/sealkeeper/tools/issue-credentials.sh game /root/credentials"
}

follow_guide() {
    git clone --quiet . "$scratch/$1-installed/sealkeeper" &&
        tools/fresh-root.sh run "$scratch/$1-installed" bash -c "apt-get install -y --no-install-recommends python3 openssl libxml2-utils &&
            cd /sealkeeper/tests/documents &&
            SEALKEEPER_PROGRAM=/usr/bin/sealkeeper SEALKEEPER_INSPECT=/usr/bin/sealkeeper-inspect python3 -B -m unittest -v test_guide"
}

for suite in "${suites[@]}"; do
    step "$suite" system tools/fresh-root.sh make "$suite" "$scratch/$suite" || continue
    git clone --quiet . "$scratch/$suite/sealkeeper"
    step "$suite" demo.sh in_source "$suite" ./demo.sh || true
    step "$suite" test.sh in_source "$suite" ./test.sh || true
    step "$suite" system2 tools/fresh-root.sh make "$suite" "$scratch/$suite-installed" || continue
    step "$suite" package make_package "$suite" || continue
    step "$suite" install install_package "$suite" || continue
    step "$suite" guide follow_guide "$suite" || true
    rm -rf --one-file-system "${scratch:?}/$suite" "${scratch:?}/$suite-installed"
done
exit "$failed"
