#!/usr/bin/env bash
# Builds the fuzzers and lets one after the other search: fuzz.sh [SECONDS [FUZZER...]], for 60 seconds
# each and all of them unless told otherwise. Exits with 1 when one found something.
#
# Inputs that reach more code stay in build/fuzz/found, where the next run goes on from them. What
# broke something is in build/fuzz/findings; give it to the fuzzer as its one argument to see it again.
set -euo pipefail
cd "$(dirname "$0")"

seconds=${1:-60}
if ! [[ $seconds =~ ^[1-9][0-9]{0,6}$ ]]; then
    echo "usage: fuzz.sh [SECONDS [FUZZER...]]" >&2
    exit 2
fi
fuzzers=("${@:2}")
if [ ${#fuzzers[@]} -eq 0 ]; then
    for corpus in fuzz/corpus/*/; do
        fuzzers+=("$(basename "$corpus")")
    done
fi
for fuzzer in "${fuzzers[@]}"; do
    if [ ! -f "fuzz/${fuzzer}_fuzzer.cpp" ]; then
        echo "there is no fuzzer $fuzzer" >&2
        exit 2
    fi
done

build=build/fuzz
tools/install-packages.sh --tests
mkdir -p "$build"
log=$build/build.log
jobs=$(getconf _NPROCESSORS_ONLN)
if ! { tools/configure.sh fuzz && cmake --build --preset fuzz -- -j "$jobs"; } > "$log" 2>&1; then
    cat "$log"
    exit 1
fi

# The last number that follows $2 in the log $1; - when there is none.
last_number() {
    local number
    number=$(grep -o "$2 *[0-9]*" "$1" | tail -n 1 | grep -o '[0-9]*$') || number=-
    echo "$number"
}

# Runs one fuzzer and shows its line. Returns 1 when it found something.
run() {
    local fuzzer=$1 log=$build/$1.log cpu=$build/$1.cpu status=0 found TIMEFORMAT='%U %S'
    mkdir -p "$build/found/$fuzzer" "$build/findings"
    { time "$build/fuzz/sealkeeper_${fuzzer}_fuzzer" -max_total_time="$seconds" -timeout=60 \
        -print_final_stats=1 -artifact_prefix="$build/findings/$fuzzer-" \
        "$build/found/$fuzzer" "fuzz/corpus/$fuzzer" > "$log" 2>&1; } 2> "$cpu" || status=1
    found=none
    if [ "$status" -ne 0 ]; then
        found="see $log"
    fi
    printf '%-16s %12s %8s %12s  %s\n' "$fuzzer" "$(last_number "$log" number_of_executed_units:)" \
        "$(last_number "$log" cov:)" "$(awk '{ printf "%.1f", ($1 + $2) / 60 }' "$cpu")" "$found"
    return "$status"
}

printf '%-16s %12s %8s %12s  %s\n' fuzzer executions edges "CPU minutes" findings
failed=0
for fuzzer in "${fuzzers[@]}"; do
    run "$fuzzer" || failed=1
done
exit "$failed"
