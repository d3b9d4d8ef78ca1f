"""Times txt2mtxt joining every text of a generated drawing, beside the time qvad takes to load and
save the same drawing with no command. usage: txt2mtxt_bench.py QVAD WORK_FOLDER [TEXTS]"""
import os
import subprocess
import sys
import time
from pathlib import Path

import ezdxf


def make_drawing(path: Path, count: int):
    doc = ezdxf.new("R2000")
    msp = doc.modelspace()
    for i in range(count):
        msp.add_text(f"line {i}", height=2.5 + (i % 3) * 0.5,
                     dxfattribs={"insert": (i % 7, -4.0 * i), "color": 256 if i % 5 else 1})
    doc.saveas(path)


def timed_run(qvad: str, drawing: Path, lines, work: Path) -> float:
    script = work / "bench.scr"
    script.write_text("\n".join(lines) + "\n", encoding="utf-8")
    env = dict(os.environ, XDG_CONFIG_HOME=str(work / "config"))
    start = time.perf_counter()
    proc = subprocess.run([qvad, str(drawing), "-s", str(script), "-o", str(work / "saved.dxf")],
                          capture_output=True, text=True, env=env, stdin=subprocess.DEVNULL)
    elapsed = time.perf_counter() - start
    if proc.returncode != 0:
        sys.exit(f"qvad failed ({proc.returncode}): {proc.stdout[-2000:]} {proc.stderr[-2000:]}")
    return elapsed


def main():
    qvad, work = sys.argv[1], Path(sys.argv[2])
    count = int(sys.argv[3]) if len(sys.argv) > 3 else 10000
    work.mkdir(parents=True, exist_ok=True)
    drawing = work / f"texts-{count}.dxf"
    if not drawing.exists():
        make_drawing(drawing, count)
    load = timed_run(qvad, drawing, [], work)
    join = timed_run(qvad, drawing, ["txt2mtxt", "ALL", ""], work)
    joined = ezdxf.readfile(work / "saved.dxf").modelspace()
    mtexts, texts = len(joined.query("MTEXT")), len(joined.query("TEXT"))
    if mtexts != 1 or texts != 0:
        sys.exit(f"expected one MTEXT and no TEXT, found {mtexts} and {texts}")
    print(f"{count} texts: load and save {load:.2f} s; load, txt2mtxt and save {join:.2f} s; "
          f"txt2mtxt alone about {join - load:.2f} s")


main()
