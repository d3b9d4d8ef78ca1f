#!/usr/bin/env bash
# Load and save of a generated ~100 MB drawing by qvad, beside ezdxf loading the same file in the
# same run. Usage: bench/dxf/run.sh [BUILD_DIR] [MB]
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
mb=${2:-100}
work="$build/bench-data"
mkdir -p "$work"
drawing="$work/big-${mb}mb.dxf"
[ -f "$drawing" ] || /usr/bin/python3 bench/dxf/make_big_drawing.py --mb "$mb" "$drawing"

echo "== qvad (three runs; the file is in the page cache after the first)"
for run in 1 2 3; do
  "$build/bin/bench_dxf_io" "$drawing" "$work/saved.dxf" | tr '\n' ' '
  echo
done
echo "== ezdxf, the same file"
/usr/bin/python3 bench/dxf/ezdxf_load_time.py "$drawing" | tr '\n' ' '
echo
rm -f "$work/saved.dxf"
