#!/usr/bin/python3
"""Selection sets and picks: host_select.py QVAD PROBE_MODULE WORKDIR

PROBESELECT builds selection sets every way the host offers (filters with
-4 operators and wildcards, windows, crossings, fences, polygons, previous,
last, pick-first, single, asked, custom prompts) and works the set operations;
PROBEPICK picks an entity and one nested in a block reference. The drawing is
small enough that every right answer is known by hand.
"""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "host"))
import hostrun  # noqa: E402

NORMAL, ERROR = "5100", "-5001"


def expected_selections(h: dict) -> dict:
    """Key -> members by fixture name (see hostrun.write_probe_drawing)."""
    return {
        "x.or": ("C1", "L2"),  # circles on DOORS, or red lines
        "x.wild": ("L1", "L2", "L3"),  # lines on WALL*
        "x.not": ("C1", "T1", "I1"),  # neither lines nor the probe's own texts
        "x.radius": ("C1",),  # circles of radius 1.5 or more: not the one inside BOX
        "w": ("L1", "L2"),
        "c": ("L1", "C1"),
        "f": ("L1", "L2"),
        "wp": ("L1", "L2"),
        "cp": ("C1", "T1"),
        "p": ("C1", "T1"),  # the set made just before
        "l": ("L3",),
        "i": ("L1", "L2"),  # the pick-first set the probe set itself
        "single": ("C1",),
        "ask": ("L1", "T1"),  # window L1 L2, remove L2, add T1
        "custom": ("L1",),
    }


def check_select(host: hostrun.Host, checks: hostrun.Checks):
    run = host.run("probeselect", hostrun.script_lines("probeselect.scr"))
    checks.true("PROBESELECT: qvad succeeds", run.status == 0 and run.output.exists(), run.describe())
    checks.true("custom prompt shown", run.times_asked("Probe add objects: ") >= 1, run.stdout)
    # The wrong word at the plain selection prompt is refused with a message, and the prompt comes again.
    lines = run.stdout.splitlines()
    wrong = [i for i, line in enumerate(lines) if line.startswith("Select objects") and line.endswith("xyz")]
    after = lines[wrong[0] + 1:] if len(wrong) == 1 else []
    prompt_again = next((i for i, line in enumerate(after) if line.startswith("Select objects")), None)
    checks.true("selection prompt asked again after a message", prompt_again is not None and prompt_again > 0,
                run.stdout)
    if not run.output.exists():
        return
    r = hostrun.probe_records(run.output)
    h = host.handles
    for key, names in expected_selections(h).items():
        checks.equal(f"{key} status", r.get(f"{key}.status"), NORMAL)
        checks.equal(f"{key} count", r.get(f"{key}.count"), str(len(names)))
        checks.equal(f"{key} members", r.get(f"{key}.handles"), hostrun.handle_set(h, *names))
    checks.true("a filter matching nothing makes no set", r.get("x.none.status") not in (None, NORMAL),
                str(r.get("x.none.status")))
    checks.equal("set first", (r.get("setfirst.status"), r.get("setfirst.clear")), (NORMAL, NORMAL))
    checks.true("cleared pick-first set gives nothing", r.get("i.after.status") not in (None, NORMAL),
                str(r.get("i.after.status")))
    checks.equal("new empty set", (r.get("ops.new.status"), r.get("ops.new.count")), (NORMAL, "0"))
    checks.equal("add, twice the same", (r.get("ops.add.status"), r.get("ops.add.count")), (NORMAL, "2"))
    checks.equal("added members", r.get("ops.add.handles"), hostrun.handle_set(h, "L1", "L3"))
    checks.equal("membership before and after removal", (r.get("ops.memb.before"), r.get("ops.memb.after")),
                 (NORMAL, ERROR))
    checks.equal("removal, twice", (r.get("ops.del.status"), r.get("ops.del.again"), r.get("ops.del.count")),
                 (NORMAL, ERROR, "1"))
    checks.equal("nth member", (r.get("ops.name.status"), r.get("ops.name.handle")), (NORMAL, h["L1"]))
    checks.equal("past the end", r.get("ops.name.past"), ERROR)
    checks.equal("freed set is gone", (r.get("ops.free.status"), r.get("ops.length.freed")), (NORMAL, ERROR))
    checks.equal("ran to its end", r.get("probeselect"), "done")


def check_pick(host: hostrun.Host, checks: hostrun.Checks):
    run = host.run("probepick", hostrun.script_lines("probepick.scr"))
    checks.true("PROBEPICK: qvad succeeds", run.status == 0 and run.output.exists(), run.describe())
    checks.equal("pick prompt after a miss", run.times_asked("Probe pick: "), 2)
    if not run.output.exists():
        return
    r = hostrun.probe_records(run.output)
    h = host.handles
    checks.equal("picked entity", (r.get("pick.status"), r.get("pick.handle")), (NORMAL, h["L1"]))
    checks.equal("pick point", r.get("pick.point"), "5,0,0")
    checks.equal("nested entity", (r.get("nested.status"), r.get("nested.handle"), r.get("nested.type")),
                 (NORMAL, h["BL"], "LINE"))
    checks.equal("nested pick point", r.get("nested.point"), "40.5,0,0")
    checks.equal("block origin in the world", r.get("nested.origin"), "40,0,0")
    checks.equal("containing references", r.get("nested.containers"), h["I1"])
    checks.equal("ran to its end", r.get("probepick"), "done")


if __name__ == "__main__":
    sys.exit(hostrun.main(__doc__, "host_select", check_select, check_pick))
