#!/usr/bin/env bash
# Runs the tests of the page in Chromium. Exits with 77 (skipped) if something they need is missing;
# tools/look-at-page.sh installs it.
set -euo pipefail
cd "$(dirname "$0")"

for program in chromium chromedriver; do
    if ! command -v "$program" >/dev/null 2>&1; then
        echo "$program is not here: the page was not looked at."
        exit 77
    fi
done
# The distribution's packages are installed for its own Python.
for python in python3 /usr/bin/python3; do
    if "$python" -c "import html5lib, selenium" >/dev/null 2>&1; then
        exec "$python" -B -m unittest test_rules_page_in_browser
    fi
done
echo "Selenium and html5lib are not here: the page was not looked at."
exit 77
