#!/usr/bin/python3
"""Every command can be taken back: host_undo.py QVAD PROBE_MODULE WORKDIR

Each case runs twice on the probe drawing after the same first step (ERASE of
one circle, so that an UNDO that takes back too much shows): once with the
case's command alone, once followed by its UNDO variant. The drawing saved
after the UNDO must equal the one saved after the first step, and a case whose
command changes the drawing must really have changed it, else the comparison
proves nothing. REDO after U must give back the command's drawing.
"""
import argparse
import shutil
import sys
from pathlib import Path

import ezdxf

sys.path.insert(0, str(Path(__file__).resolve().parent / "host"))
import hostrun  # noqa: E402

FIRST_STEP = ["ERASE", "#{C1}", ""]

# name, the command's lines, the lines that take it back, whether the command changes the drawing.
CASES = [
    ("layer_make", ["-LAYER", "M", "NEW1", ""], ["U"], True),
    ("layer_set", ["-LAYER", "S", "DOORS", ""], ["U"], True),
    ("layer_new", ["-LAYER", "N", "NA,NB", ""], ["U"], True),
    ("layer_color", ["-LAYER", "C", "1", "WALLS", ""], ["U"], True),
    ("layer_off", ["-LAYER", "OFF", "DOORS", ""], ["U"], True),
    ("layer_freeze", ["-LAYER", "F", "WALLS2", ""], ["U"], True),
    ("layer_lock", ["-LAYER", "LO", "NOTES", ""], ["U"], True),
    # Switched and switched back in one command: nothing changes, so U must not reach the first step.
    ("layer_off_on", ["-LAYER", "OFF", "DOORS", "ON", "DOORS", ""], ["U"], False),
    ("layer_freeze_thaw", ["-LAYER", "F", "WALLS2", "T", "WALLS2", ""], ["U"], False),
    ("layer_lock_unlock", ["-LAYER", "LO", "NOTES", "U", "NOTES", ""], ["U"], False),
    ("ucs", ["UCS", "O", "5,5,0"], ["U"], True),
    ("ucs_world", ["UCS", "O", "5,5,0", "UCS", "W"], ["U", "U"], False),
    ("setvar", ["SETVAR", "USERI3", "9"], ["U"], True),
    ("cecolor", ["CECOLOR", "2"], ["U"], True),
    ("erase", ["ERASE", "#{L1}", ""], ["U"], True),
    ("erase_undo_1", ["ERASE", "#{L1}", ""], ["UNDO", "1"], True),
    ("list", ["LIST", "#{L1}", ""], ["U"], False),
    ("select", ["SELECT", "#{L1}", ""], ["U"], False),
    ("saveas", ["SAVEAS", "{SAVEAS}"], ["U"], False),
    ("undo_count", ["SETVAR", "USERI3", "9", "CECOLOR", "2"], ["UNDO", "2"], True),
    ("undo_mark_back", ["UNDO", "M", "SETVAR", "USERI3", "9", "ERASE", "#{L1}", ""], ["UNDO", "B"], True),
    ("undo_group", ["UNDO", "BE", "SETVAR", "USERI3", "9", "ERASE", "#{L1}", "", "UNDO", "E"], ["U"], True),
    ("probeedit", ["PROBEEDIT", "#{L2}", "#{T1}"], ["U"], True),
    # The probe queues a SETVAR that runs as a command of its own after it.
    ("probecmd", ["PROBECMD"], ["U", "U"], True),
]

REDO_CASES = [
    ("erase", ["ERASE", "#{L1}", ""]),
    ("probeedit", ["PROBEEDIT", "#{L2}", "#{T1}"]),
]


def saved(host, checks, name, lines, **kwargs):
    run = host.run(name, FIRST_STEP + lines, **kwargs)
    ok = run.status == 0 and run.output.exists()
    checks.true(f"{name}: qvad succeeds", ok, run.describe())
    return run.output if ok else None


def check_case(host, checks, before: Path, name, command, undo, changes):
    host.handles["SAVEAS"] = str(host.work / f"{name}.saveas.dxf")
    after = saved(host, checks, f"{name}_only", command)
    undone = saved(host, checks, f"{name}_undone", command + undo)
    if after and changes:
        checks.true(f"{name}: the command changed the drawing", hostrun.drawing_differences(before, after) != [])
    if undone:
        diffs = hostrun.drawing_differences(before, undone)
        checks.true(f"{name}: {' '.join(undo)} gives back the drawing before it", not diffs, "\n".join(diffs))


def check_redo(host, checks, name, command):
    after = saved(host, checks, f"redo_{name}_only", command)
    redone = saved(host, checks, f"redo_{name}", command + ["U", "REDO"])
    if after and redone:
        diffs = hostrun.drawing_differences(after, redone)
        checks.true(f"{name}: U then REDO gives back the command's drawing", not diffs, "\n".join(diffs))


def check_save(host, checks, before: Path):
    """SAVE writes the drawing to its own file; U after it changes nothing."""
    own = host.work / "save_own.dxf"
    shutil.copyfile(host.drawing, own)
    undone = saved(host, checks, "save_undone", ["SAVE", "U"], drawing=own)
    if undone:
        diffs = hostrun.drawing_differences(before, undone)
        checks.true("SAVE: U gives back the drawing before it", not diffs, "\n".join(diffs))
    diffs = hostrun.drawing_differences(before, own)
    checks.true("SAVE wrote the drawing to its own file", not diffs, "\n".join(diffs))


def check_saveas_file(host, checks, before: Path):
    target = host.work / "saveas_file.dxf"
    if target.exists():
        target.unlink()
    host.handles["SAVEAS"] = str(target)
    saved(host, checks, "saveas_file", ["SAVEAS", "{SAVEAS}"])
    diffs = hostrun.drawing_differences(before, target) if target.exists() else ["not written"]
    checks.true("SAVEAS wrote the drawing as it was", not diffs, "\n".join(diffs))


def check_probeedit_results(host, checks):
    edited = saved(host, checks, "probeedit_results", ["PROBEEDIT", "#{L2}", "#{T1}"])
    if not edited:
        return
    r = hostrun.probe_records(edited)
    doc = ezdxf.readfile(str(edited))
    h = host.handles
    line = doc.entitydb.get(r.get("make.line.handle", "?"))
    checks.true("made line changed by its data list", line is not None and line.dxftype() == "LINE"
                and tuple(line.dxf.end)[:2] == (110, 110), str(line))
    checks.equal("circle erased, brought back, erased", doc.entitydb.get(r.get("make.circle.handle", "?")), None)
    checks.equal("erase statuses", (r.get("del.circle"), r.get("undel.circle"), r.get("redel.circle")),
                 ("5100", "5100", "5100"))
    l2 = doc.entitydb.get(h["L2"])
    checks.equal("picked entity recoloured", l2.dxf.color if l2 else None, 3)
    checks.equal("picked entity erased", doc.entitydb.get(h["T1"]), None)
    checks.equal("ran to its end", r.get("probeedit"), "done")


def main(argv) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("qvad")
    parser.add_argument("probe")
    parser.add_argument("workdir")
    parser.add_argument("--case", action="append", help="run only these cases")
    parser.add_argument("--except", dest="excluded", action="append", default=[],
                        help="leave these cases out (also save, saveas_file, probeedit_results, redo_NAME)")
    args = parser.parse_args(argv)
    host = hostrun.Host(args.qvad, args.probe, args.workdir)
    checks = hostrun.Checks()

    before = saved(host, checks, "before", [])
    if before is None:
        return checks.report("host_undo")
    checks.equal("first step erased C1", ezdxf.readfile(str(before)).entitydb.get(host.handles["C1"]), None)
    def wanted(name):
        return (not args.case or name in args.case) and name not in args.excluded

    for name, command, undo, changes in CASES:
        if wanted(name):
            check_case(host, checks, before, name, command, undo, changes)
    for name, command in REDO_CASES:
        if wanted(f"redo_{name}"):
            check_redo(host, checks, name, command)
    if wanted("save"):
        check_save(host, checks, before)
    if wanted("probeedit_results"):
        check_probeedit_results(host, checks)
    if wanted("saveas_file"):
        check_saveas_file(host, checks, before)
    return checks.report("host_undo")


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
