#!/usr/bin/env bash
# Overkill on 100,000 and 1,000,000 lines, arcs, circles and polylines (20% duplicates, 10% overlaps),
# each timed beside qvad loading the same drawing in the same run.
# Usage: bench/overkill/run.sh [BUILD_DIR] [COUNT ...]
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
shift || true
counts=("$@")
[ ${#counts[@]} -gt 0 ] || counts=(100000 1000000)
work="$build/bench-data/overkill"
mkdir -p "$work"
/usr/bin/python3 bench/overkill/overkill_bench.py "$build/bin/qvad" "$work" "${counts[@]}"
