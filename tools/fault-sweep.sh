#!/usr/bin/env bash
# Runs generate, verify and list many times, each time with one call of one library or system function failing, and
# checks each run against the rule in tests/fault/sweep/rule_of_three.py. Builds what it needs.
#
#   tools/fault-sweep.sh                every call, failing once and from then on: tens of thousands of runs
#   tools/fault-sweep.sh --companion    the same for sealkeeper-inspect; may precede the options below
#   tools/fault-sweep.sh --sample N     N of these runs, always the same ones
#   tools/fault-sweep.sh --only TEXT    those whose name begins with TEXT, e.g. generate-exclude/library/malloc
#   tools/fault-sweep.sh --case NAME    one run, with its console output and the caller of the failed call
#   tools/fault-sweep.sh --exceptions   the exceptions from the rule, with their reasons
#
# Prints a line for each run that broke the rule, and exits with 1 if there was one. Exits with 77 where it cannot
# run: it needs LD_PRELOAD and the tracing of Linux.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "$(uname -s)" != Linux ]; then
    echo "Nothing was run: this script knows Linux alone."
    exit 77
fi
tools/install-packages.sh --tests
mkdir -p build
log=build/dev-configure.log
tools/configure.sh dev > "$log" 2>&1 || { cat "$log"; exit 1; }
companion=()
targets=(sealkeeper sealkeeper_fault_preload)
if [ "${1:-}" = --companion ]; then
    shift
    targets+=(sealkeeper-inspect)
    companion=(--companion build/dev/sealkeeper-inspect)
fi
cmake --build --preset dev --target "${targets[@]}" -- -j "$(getconf _NPROCESSORS_ONLN)" --quiet
bash tests/support/issue_test_credentials.sh build/test-credentials

PYTHONPATH=tests/independent exec python3 -B tests/fault/sweep/fault_sweep.py \
    --program build/dev/sealkeeper "${companion[@]}" \
    --preload build/dev/tests/fault/preload/libsealkeeper_fault_preload.so \
    --credentials build/test-credentials \
    --revocation-list trust/development/crl.der \
    "$@"
