#!/usr/bin/env bash
# Changes each conditional branch of one unit in turn and checks whether the unit tests notice:
# mutate.sh UNIT [options of mutate.py]. See --help for the units.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-packages.sh --tests --mutation
# The libclang bindings are installed for the system's Python.
exec /usr/bin/python3 -B tools/mutation/mutate.py "$@"
