"""Times Overkill on a generated drawing beside the time qvad takes to load the same drawing, in the same
run (best of three runs each). usage: overkill_bench.py QVAD WORK_FOLDER COUNT [COUNT ...]"""
import os
import subprocess
import sys
import time
from pathlib import Path


HERE = Path(__file__).resolve().parent
# Overkill, everything, then the dialog with its defaults and OK.
OVERKILL = ["Overkill", "ALL", ""] + [""] * 9 + ["OK"]


def timed_run(qvad, drawing, lines, work, output=None):
    script = work / "bench.scr"
    script.write_text("\n".join(lines) + "\n", encoding="utf-8")
    env = dict(os.environ, XDG_CONFIG_HOME=str(work / "config"), XDG_STATE_HOME=str(work / "state"))
    command = [qvad, str(drawing), "-s", str(script)] + (["-o", str(output)] if output else [])
    start = time.perf_counter()
    proc = subprocess.run(["/usr/bin/time", "-f", "%M"] + command, capture_output=True, text=True,
                          env=env, stdin=subprocess.DEVNULL)
    elapsed = time.perf_counter() - start
    if proc.returncode != 0:
        sys.exit(f"qvad failed ({proc.returncode}): {proc.stdout[-2000:]} {proc.stderr[-2000:]}")
    peak_kb = int(proc.stderr.strip().splitlines()[-1])
    return elapsed, peak_kb, proc.stdout


def main():
    qvad, work = sys.argv[1], Path(sys.argv[2])
    work.mkdir(parents=True, exist_ok=True)
    results = []
    for count in map(int, sys.argv[3:]):
        drawing = work / f"overkill-{count}.dxf"
        if not drawing.exists():
            subprocess.run(["/usr/bin/python3", str(HERE / "make_drawing.py"), str(drawing), str(count)],
                           check=True)
        # Best of three, alternating, so that a busy moment of the machine hits both sides alike.
        loads, totals = [], []
        for _ in range(3):
            loads.append(timed_run(qvad, drawing, [], work))
            totals.append(timed_run(qvad, drawing, OVERKILL, work))
        load, load_kb, _ = min(loads)
        total, total_kb, out = min(totals)
        overkill = total - load
        report = [line for line in out.splitlines() if "deleted" in line or "removed" in line]
        print(f"{count} objects: load {load:.2f} s ({load_kb // 1024} MiB); load + Overkill {total:.2f} s "
              f"({total_kb // 1024} MiB); Overkill alone {overkill:.2f} s = {overkill / load:.1f} x load; "
              f"{'; '.join(r.strip() for r in report)}")
        results.append((count, overkill))
    if len(results) >= 2:
        (small, t_small), (large, t_large) = results[0], results[-1]
        print(f"{large // small} times the objects took {t_large / t_small:.1f} times as long")


main()
