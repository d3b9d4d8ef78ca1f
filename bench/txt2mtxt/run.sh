#!/usr/bin/env bash
# txt2mtxt joining 10,000 texts in one run, timed beside loading and saving the same drawing.
# Usage: bench/txt2mtxt/run.sh [BUILD_DIR] [TEXTS]
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
texts=${2:-10000}
work="$build/bench-data/txt2mtxt"
mkdir -p "$work"
echo "== qvad (three runs)"
for run in 1 2 3; do
  /usr/bin/python3 bench/txt2mtxt/txt2mtxt_bench.py "$build/bin/qvad" "$work" "$texts"
done
rm -f "$work/saved.dxf"
