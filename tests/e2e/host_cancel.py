#!/usr/bin/python3
"""A script that ends inside a command: host_cancel.py QVAD PROBE_MODULE WORKDIR

The command is cancelled, qvad exits nonzero with a message naming the
script, and the output file is not written: one left from before keeps its
bytes, and the drawing qvad opened is untouched. Commands before the one cut
short must not make the run count as a success either.
"""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "host"))
import hostrun  # noqa: E402

SENTINEL = b"left from an earlier run\n"

CASES = [
    # The probe has made and changed entities when the input runs out at its pick prompt.
    ("cut_probeedit", ["PROBEEDIT"]),
    ("cut_probepoint", ["PROBEPOINT", "3,4"]),
    ("cut_probeselect", ["PROBESELECT", "#{C1}", "W", "-1,-1"]),
    ("cut_after_a_command", ["ERASE", "#{L1}", "", "-LAYER", "M", "CUT"]),
]


def check_case(host: hostrun.Host, checks: hostrun.Checks, name: str, lines):
    out = host.work / f"{name}.out.dxf"
    out.write_bytes(SENTINEL)
    drawing_bytes = host.drawing.read_bytes()
    run = host.run(name, lines, output=False, extra=["-o", str(out)])
    checks.true(f"{name}: exits nonzero", run.status != 0, run.describe())
    checks.true(f"{name}: the message names the script", f"{name}.scr" in run.transcript, run.describe())
    checks.true(f"{name}: output untouched", out.read_bytes() == SENTINEL)
    checks.true(f"{name}: drawing untouched", host.drawing.read_bytes() == drawing_bytes)
    leftovers = [p.name for p in host.work.iterdir() if f"{name}.out" in p.name and p != out]
    checks.true(f"{name}: no temporary file left", not leftovers, str(leftovers))



def check_cases(host, checks):
    for name, lines in CASES:
        check_case(host, checks, name, lines)


if __name__ == "__main__":
    sys.exit(hostrun.main(__doc__, "host_cancel", check_cases))
