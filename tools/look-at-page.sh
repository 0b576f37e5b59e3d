#!/usr/bin/env bash
# Opens the page of `sealkeeper-inspect rules` for 20,000 files in Chromium and runs its tests there. Keeps the
# page and screenshots in build/page. Installs Chromium, which the other tests do not need.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-packages.sh --tests --browser
build=build/dev
pages=build/page
sample="$PWD/$build/tests/inspect/page/sealkeeper_sample_report"
mkdir -p "$build" "$pages"

tools/configure.sh dev > "$build-configure.log" 2>&1 || { cat "$build-configure.log"; exit 1; }
cmake --build --preset dev --target sealkeeper_sample_report
"$sample" html 20000 > "$pages/rules.html"
SEALKEEPER_SAMPLE_REPORT="$sample" SEALKEEPER_SCREENSHOTS="$PWD/$pages" \
    tests/inspect/page/run_in_browser.sh
echo "The page is $pages/rules.html, its pictures are beside it."
