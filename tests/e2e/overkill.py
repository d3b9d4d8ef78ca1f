#!/usr/bin/python3
"""Overkill end to end: overkill.py QVAD WORKDIR

Drawings are written with ezdxf, qvad runs Overkill on them from scripts (the options dialog answered
on the command line), and ezdxf reads and audits what qvad saved: which objects survive, their
geometry, the two report lines, and that UNDO gives the drawing back.
"""
import math
import os
import subprocess
import sys
from pathlib import Path

import ezdxf

TIMEOUT = 120
DELETED = "duplicate objects deleted."
COVERED = "arcs removed because a circle covers them."

# The dialog's questions in order: tolerance, ignore layer/linetype/colour/lineweight/plot style,
# polylines, combine overlapping, combine end to end; then OK or Cancel.
KEEP = ""


def dialog(tolerance=KEEP, ignore_layer=KEEP, ignore_linetype=KEEP, ignore_color=KEEP,
           ignore_lineweight=KEEP, ignore_plotstyle=KEEP, polylines=KEEP, overlapping=KEEP,
           end_to_end=KEEP, ok="OK"):
    return [tolerance, ignore_layer, ignore_linetype, ignore_color, ignore_lineweight,
            ignore_plotstyle, polylines, overlapping, end_to_end, ok]


class Case:
    def __init__(self, work: Path, name: str):
        self.work = work
        self.name = name
        self.drawing = work / f"{name}.dxf"
        self.output = work / f"{name}.out.dxf"
        self.doc = ezdxf.new("R2000")
        self.msp = self.doc.modelspace()
        self.handles = {}
        self.stdout = ""

    def add(self, name, entity):
        self.handles[name] = entity.dxf.handle.upper()
        return entity

    def line(self, name, a, b, **attribs):
        return self.add(name, self.msp.add_line(a, b, dxfattribs=attribs))

    def arc(self, name, center, radius, start, end, **attribs):
        return self.add(name, self.msp.add_arc(center, radius, start, end, dxfattribs=attribs))

    def circle(self, name, center, radius, **attribs):
        return self.add(name, self.msp.add_circle(center, radius, dxfattribs=attribs))

    def polyline(self, name, points, closed=False, **attribs):
        return self.add(name, self.msp.add_lwpolyline(points, close=closed, dxfattribs=attribs))

    def picks(self, *names):
        return [f"#{self.handles[n]}" for n in names]

    def run(self, lines, expect_exit=0):
        self.doc.saveas(self.drawing)
        script = self.work / f"{self.name}.scr"
        script.write_text("\n".join(lines) + "\n", encoding="utf-8")
        env = dict(os.environ, XDG_CONFIG_HOME=str(self.work / "config"),
                   XDG_STATE_HOME=str(self.work / "state"))
        if self.output.exists():
            self.output.unlink()
        ran = subprocess.run([sys.argv[1], str(self.drawing), "-s", str(script), "-o", str(self.output)],
                             capture_output=True, text=True, env=env, timeout=TIMEOUT,
                             stdin=subprocess.DEVNULL)
        # Message boxes go to the error stream, which a person sees on the same terminal.
        self.stdout = ran.stdout + ran.stderr
        if ran.returncode != expect_exit:
            raise AssertionError(f"{self.name}: exit {ran.returncode}\n{ran.stdout[-3000:]}\n{ran.stderr}")
        return self.stdout

    def saved(self):
        doc = ezdxf.readfile(self.output)
        auditor = doc.audit()
        if auditor.has_errors or auditor.has_fixes:
            problems = [str(e) for e in list(auditor.errors) + list(auditor.fixes)]
            raise AssertionError(f"{self.name}: the saved drawing does not audit clean: {problems}")
        return doc

    def survivors(self):
        doc = self.saved()
        present = {e.dxf.handle.upper() for e in doc.modelspace()}
        return {name for name, handle in self.handles.items() if handle in present}, doc


class Checks:
    def __init__(self):
        self.failures = []
        self.count = 0

    def that(self, case, condition, what):
        self.count += 1
        if not condition:
            self.failures.append(f"{case.name}: {what}\n--- output ---\n{case.stdout[-1500:]}")


def close(a, b, tol=1e-6):
    return all(abs(x - y) <= tol for x, y in zip(a, b))


def overkill(picks, answers):
    return ["Overkill", *picks, "", *answers]


def main():
    work = Path(sys.argv[2])
    work.mkdir(parents=True, exist_ok=True)
    check = Checks()

    # Two copies of a line drawn in opposite directions: the one picked first survives.
    c = Case(work, "reversed")
    c.line("a", (0, 0), (10, 5))
    c.line("b", (10, 5), (0, 0))
    out = c.run(overkill(c.picks("b", "a"), dialog()))
    alive, _ = c.survivors()
    check.that(c, alive == {"b"}, f"survivors {alive}, want b")
    check.that(c, f"1 {DELETED}" in out, "report of one deleted duplicate")
    check.that(c, COVERED not in out, "no covered-arcs line")

    # Collinear overlapping and end-to-end lines become one; with end to end off only overlaps do.
    for end_to_end, want in (("", {"a"}), ("No", {"a", "c"})):
        c = Case(work, f"collinear_e2e_{end_to_end or 'on'}")
        c.line("a", (0, 0), (10, 0))
        c.line("b", (6, 0), (15, 0))
        c.line("c", (15, 0), (20, 0))
        c.run(overkill(c.picks("a", "b", "c"), dialog(end_to_end=end_to_end)))
        alive, doc = c.survivors()
        check.that(c, alive == want, f"survivors {alive}, want {want}")
        line = doc.entitydb[c.handles["a"]]
        reach = 20 if end_to_end == "" else 15
        check.that(c, close(line.dxf.start, (0, 0, 0)) and close(line.dxf.end, (reach, 0, 0)),
                   f"merged line {line.dxf.start} {line.dxf.end}, want 0..{reach}")

    # Two half arcs close into a circle; not with end to end off; an existing circle is reused.
    c = Case(work, "arcs_to_circle")
    c.arc("a", (5, 5), 3, 0, 180)
    c.arc("b", (5, 5), 3, 180, 360)
    out = c.run(overkill(["ALL"], dialog()))
    alive, doc = c.survivors()
    circles = doc.modelspace().query("CIRCLE")
    check.that(c, not alive, f"both arcs erased, left {alive}")
    check.that(c, len(circles) == 1 and close(circles[0].dxf.center, (5, 5, 0))
               and abs(circles[0].dxf.radius - 3) < 1e-9, "one circle r=3 at 5,5 made")
    check.that(c, f"2 {DELETED}" in out, "both arcs counted")

    c = Case(work, "arcs_no_end_to_end")
    c.arc("a", (5, 5), 3, 0, 180)
    c.arc("b", (5, 5), 3, 180, 360)
    c.run(overkill(["ALL"], dialog(end_to_end="No")))
    alive, doc = c.survivors()
    check.that(c, alive == {"a", "b"} and not doc.modelspace().query("CIRCLE"), "arcs untouched")

    c = Case(work, "arcs_with_circle")
    c.circle("c", (5, 5), 3)
    c.arc("a", (5, 5), 3, 0, 180)
    c.arc("b", (5, 5), 3, 180, 360)
    out = c.run(overkill(c.picks("c", "a", "b"), dialog()))
    alive, doc = c.survivors()
    check.that(c, alive == {"c"} and len(doc.modelspace().query("CIRCLE")) == 1,
               f"existing circle reused, survivors {alive}")

    # Overlapping arcs of one circle merge into one arc.
    c = Case(work, "arcs_overlap")
    c.arc("a", (0, 0), 2, 0, 90)
    c.arc("b", (0, 0), 2, 45, 135)
    c.run(overkill(["ALL"], dialog()))
    alive, doc = c.survivors()
    arc = doc.entitydb[c.handles["a"]] if "a" in alive else None
    check.that(c, alive == {"a"} and arc is not None and abs(arc.dxf.start_angle) < 1e-6
               and abs(arc.dxf.end_angle - 135) < 1e-6, f"merged arc, survivors {alive}")

    # An arc under a circle goes, counted on the second report line; a duplicate line on the first.
    c = Case(work, "two_reports")
    c.circle("c", (0, 0), 4)
    c.arc("a", (0, 0), 4, 10, 80)
    c.line("l1", (0, 0), (1, 1))
    c.line("l2", (0, 0), (1, 1))
    out = c.run(overkill(["ALL"], dialog()))
    alive, _ = c.survivors()
    check.that(c, alive == {"c", "l1"}, f"survivors {alive}")
    check.that(c, f"1 {DELETED}" in out and f"1 {COVERED}" in out, "both report lines")

    # Ignored colour makes a red and a blue copy duplicates; compared colour keeps both.
    for ignore, want in (("Yes", {"red"}), ("No", {"red", "blue"})):
        c = Case(work, f"colour_ignored_{ignore}")
        c.line("red", (0, 0), (5, 0), color=1)
        c.line("blue", (0, 0), (5, 0), color=5)
        c.run(overkill(["ALL"], dialog(ignore_color=ignore)))
        alive, _ = c.survivors()
        check.that(c, alive == want, f"survivors {alive}, want {want}")

    # Objects on frozen, locked or off layers are never touched.
    c = Case(work, "layer_states")
    c.doc.layers.add("FROZEN").freeze()
    c.doc.layers.add("LOCKED").lock()
    c.doc.layers.add("OFF").off()
    for layer in ("FROZEN", "LOCKED", "OFF"):
        c.line(f"{layer}1", (0, 0), (5, 5), layer=layer)
        c.line(f"{layer}2", (0, 0), (5, 5), layer=layer)
        c.line(f"{layer}3", (3, 3), (9, 9), layer=layer)
    out = c.run(overkill(["ALL"], dialog(ignore_layer="No")))
    alive, _ = c.survivors()
    check.that(c, len(alive) == 9, f"all nine kept, survivors {sorted(alive)}")
    check.that(c, DELETED not in out, "nothing reported")

    # Polylines on: a duplicate polyline and a line lying on a segment go; off: nothing changes.
    for polylines, want in (("", {"p1"}), ("No", {"p1", "p2", "l"})):
        c = Case(work, f"polylines_{polylines or 'on'}")
        c.polyline("p1", [(0, 0), (10, 0), (10, 10)])
        c.polyline("p2", [(10, 10), (10, 0), (0, 0)])
        c.line("l", (2, 0), (7, 0))
        c.run(overkill(["ALL"], dialog(polylines=polylines)))
        alive, _ = c.survivors()
        check.that(c, alive == want, f"survivors {alive}, want {want}")

    # Tolerance 0: an exact copy goes, one 1e-7 away stays; a larger tolerance takes both.
    for tolerance, want in (("0", {"a", "near"}), ("0.001", {"a"})):
        c = Case(work, f"tolerance_{tolerance}")
        c.line("a", (0, 0), (5, 0))
        c.line("exact", (0, 0), (5, 0))
        c.line("near", (0, 1e-7), (5, 1e-7))
        c.run(overkill(["ALL"], dialog(tolerance=tolerance, overlapping="No", end_to_end="No")))
        alive, _ = c.survivors()
        check.that(c, alive == want, f"survivors {alive}, want {want}")

    # A negative tolerance is refused with a message and the dialog asks again, showing what was typed.
    c = Case(work, "negative_tolerance")
    c.line("a", (0, 0), (5, 0))
    c.line("b", (0, 0), (5, 0))
    out = c.run(overkill(["ALL"], dialog(tolerance="-1") + dialog(tolerance="0.5")))
    alive, _ = c.survivors()
    check.that(c, "The tolerance must not be negative." in out, "refusal message")
    check.that(c, alive == {"a"}, f"second OK ran the command, survivors {alive}")

    # Cancel in the dialog changes nothing and prints nothing.
    c = Case(work, "cancelled")
    c.line("a", (0, 0), (5, 0))
    c.line("b", (0, 0), (5, 0))
    out = c.run(overkill(["ALL"], dialog(ok="Cancel")))
    alive, _ = c.survivors()
    check.that(c, alive == {"a", "b"} and DELETED not in out, "cancel leaves the drawing")

    # One selected object: nothing happens and nothing is printed.
    c = Case(work, "one_object")
    c.line("a", (0, 0), (5, 0))
    c.line("b", (0, 0), (5, 0))
    out = c.run(overkill(c.picks("b"), dialog()))
    alive, _ = c.survivors()
    check.that(c, alive == {"a", "b"} and DELETED not in out, "a single object does nothing")

    # UNDO brings back every erased object and the old geometry; the made circle goes again.
    c = Case(work, "undo")
    c.line("a", (0, 0), (10, 0))
    c.line("b", (5, 0), (15, 0))
    c.line("d", (0, 0), (10, 0))
    c.arc("x", (5, 5), 3, 0, 180)
    c.arc("y", (5, 5), 3, 180, 360)
    c.run(overkill(["ALL"], dialog()) + ["UNDO", "1"])
    alive, doc = c.survivors()
    check.that(c, alive == set(c.handles), f"all back after UNDO, survivors {alive}")
    line = doc.entitydb[c.handles["a"]]
    check.that(c, close(line.dxf.end, (10, 0, 0)), "line a has its old end again")
    check.that(c, not doc.modelspace().query("CIRCLE"), "the made circle is gone again")

    # The options stay for the next Overkill in the session.
    c = Case(work, "options_kept")
    c.line("red", (0, 0), (5, 0), color=1)
    c.line("blue", (0, 0), (5, 0), color=5)
    c.line("red2", (0, 9), (5, 9), color=1)
    c.line("blue2", (0, 9), (5, 9), color=5)
    c.run(overkill(c.picks("red2", "blue2"), dialog(ignore_color="Yes"))
          + overkill(c.picks("red", "blue"), dialog()))
    alive, _ = c.survivors()
    check.that(c, alive == {"red", "red2"}, f"second run still ignored colour, survivors {alive}")

    for failure in check.failures:
        print("FAIL:", failure)
    if check.failures:
        sys.exit(1)
    print(f"overkill: {check.count} checks passed")


main()
