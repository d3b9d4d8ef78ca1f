#!/usr/bin/env bash
# Runs the container benchmark and prints a markdown table: for each kind of work, our time divided by the
# time of the standard container doing the same work in the same run.
#   bench/containers/run.sh [path/to/bench_containers] [benchmark options...]
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
binary=${1:-${BUILD_DIR:-$here/../../build}/bin/bench_containers}
[[ $# -gt 0 ]] && shift
if [[ ! -x $binary ]]; then
  echo "run.sh: no benchmark program at $binary (build the bench_containers target first)" >&2
  exit 1
fi

json=$(mktemp)
trap 'rm -f "$json"' EXIT
# Medians of three runs: other work on the machine moves single runs more than it moves their ratio.
"$binary" --benchmark_format=json --benchmark_repetitions=3 --benchmark_report_aggregates_only=true "$@" >"$json"

/usr/bin/python3 - "$json" <<'PY'
import json, sys

runs = json.load(open(sys.argv[1]))["benchmarks"]
medians = [run for run in runs if run.get("aggregate_name") == "median"]
if medians:
    runs = medians
works = {}
for run in runs:
    if run.get("run_type") == "aggregate" and run not in medians:
        continue
    work, side_name = run["run_name"].split("/", 1)
    side, name = side_name.split(":", 1)
    works.setdefault(work, {"qv": [], "ref": []})[side].append((name, run["real_time"], run["time_unit"]))

print("| work (100,000 elements) | ours | time | reference | time | ratio (ours / reference) |")
print("| --- | --- | ---: | --- | ---: | ---: |")
for work, sides in works.items():
    ref_name, ref_time, ref_unit = sides["ref"][0]
    for name, time, unit in sides["qv"]:
        ratio = time / ref_time
        shown = f"{ratio:.0f}" if ratio >= 100 else f"{ratio:.2f}" if ratio >= 0.01 else f"{ratio:.1e}"
        print(f"| {work} | `{name}` | {time:.3f} {unit} | `{ref_name}` | {ref_time:.3f} {ref_unit} | {shown} |")
PY
