"""The quantity tools run by scripts through qvad on drawings written with ezdxf: lengths, areas,
perimeters, counts, the clipboard, the number format of XQuery.ini and the running total in USERR5.

usage: module_quantities.py QVAD MODULE_FOLDER WORK_FOLDER
"""

import math
import os
import shutil
import subprocess
import sys

import ezdxf


class Quantities:
    def __init__(self, qvad, module_folder, work):
        self.qvad = qvad
        self.work = work
        shutil.rmtree(work, ignore_errors=True)
        self.modules = os.path.join(work, "modules")
        os.makedirs(self.modules)
        # A private copy of the module, so that its XQuery.ini is this test's own.
        for name in os.listdir(module_folder):
            if name.startswith("QvTooldeck"):
                shutil.copy(os.path.join(module_folder, name), self.modules)
        self.env = dict(os.environ, XDG_CONFIG_HOME=os.path.join(work, "config"),
                        XDG_STATE_HOME=os.path.join(work, "state"))
        self.failures = []

    def settings(self, **values):
        names = {"precision": "Precision", "drawing": "Length in drawing units",
                 "real": "Equivalent length in real world units", "clipboard": "To clipboard"}
        with open(os.path.join(self.modules, "XQuery.ini"), "w", encoding="utf-8") as ini:
            for key, value in values.items():
                ini.write(f"[{names[key]}]\nvalue={value}\n")

    def clipboard(self, text=None):
        path = os.path.join(self.work, "state", "qvad", "clipboard.txt")
        if text is None:
            return open(path, encoding="utf-8").read() if os.path.exists(path) else None
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as clip:
            clip.write(text)
        return text

    def run(self, name, lines, drawing, output=None):
        script = os.path.join(self.work, name + ".scr")
        with open(script, "w", encoding="utf-8") as text:
            text.write("\n".join(lines) + "\n")
        command = [self.qvad, drawing, "-s", script, "--module", os.path.join(self.modules, "QvTooldeck.omx")]
        if output:
            command += ["-o", output]
        ran = subprocess.run(command, capture_output=True, text=True, env=self.env, timeout=120,
                             stdin=subprocess.DEVNULL)
        if ran.returncode != 0:
            self.failures.append(f"{name}: exit {ran.returncode}: {ran.stderr}")
        return ran.stdout

    def expect(self, name, wanted, output):
        if wanted not in output:
            self.failures.append(f"{name}: {wanted!r} not in {output!r}")


def drawing(path, build):
    doc = ezdxf.new("R2000")
    build(doc.modelspace())
    doc.saveas(path)
    return path


def main():
    qvad, module_folder, work = sys.argv[1:4]
    q = Quantities(qvad, module_folder, work)
    empty = drawing(os.path.join(work, "empty.dxf"), lambda msp: None)

    # Lengths: increments scaled, angles not; the same point; a vertical segment.
    q.settings(drawing=2, real=10)
    out = q.run("xlen", ["xlen", "0,0,0", "3,4,0"], empty)
    q.expect("xlen", "Length = 25.00,  XY plane inclination = 53,  Angle with the XY plane = 0,\n"
             " X increment =  15.00,   Y increment = 20.00,  Z increment =  0.00", out)
    if q.clipboard() != "25.00":
        q.failures.append(f"xlen put {q.clipboard()!r} on the clipboard")
    out = q.run("xlen_same", ["xlen", "1,1,1", "1.000001,1,1"], empty)
    q.expect("xlen_same", "Length = 0    Select the same point.", out)
    q.settings(drawing=0, real=10)
    out = q.run("xlen_vertical", ["xlen", "5,5,0", "5,5,7"], empty)
    q.expect("xlen_vertical", "Length = 7.00,  XY plane inclination = 0,  Angle with the XY plane = 90", out)

    # Precision "0" and "0.000".
    q.settings(precision="0")
    out = q.run("xlen_p0", ["xlen", "0,0", "2.6,0"], empty)
    q.expect("xlen_p0", "Length = 3,", out)
    q.settings(precision="0.000")
    out = q.run("xlen_p3", ["xlen", "0,0", "1,1"], empty)
    q.expect("xlen_p3", "Length = 1.414,", out)

    # Areas: a polygon by points, a polyline with a bulge by object, a hole taken away.
    q.settings()

    def shapes(msp):
        msp.add_lwpolyline([(0, 0, 0), (2, 0, 0), (2, 2, 1.0), (0, 2, 0)], format="xyb", close=True)
        msp.add_circle((20, 20), 1)
        msp.add_line((50, 50), (60, 50))
    shapes_dxf = drawing(os.path.join(work, "shapes.dxf"), shapes)
    out = q.run("xarea_points", ["xarea", "0,0", "4,0", "4,3", "0,3", ""], empty)
    q.expect("xarea_points", "Area = 12.00 mm^2", out)
    out = q.run("xperim_points", ["xperim", "0,0", "4,0", "4,3", "0,3", ""], empty)
    q.expect("xperim_points", "Perimeter = 14.00 mm", out)
    out = q.run("xarea_object", ["xarea", "E", "1,0", ""], shapes_dxf)
    q.expect("xarea_object", f"Area = {4 + math.pi / 2:.2f} mm^2", out)
    out = q.run("xarea_hole", ["xarea", "A", "E", "1,0", "", "S", "E", "21,20", "", ""], shapes_dxf)
    q.expect("xarea_hole", f"Total = {4 + math.pi / 2 - math.pi:.2f} mm^2", out)
    saved = os.path.join(work, "shapes.out.dxf")
    q.run("xarea_markers", ["xarea", "E", "1,0", ""], shapes_dxf, saved)
    if len(ezdxf.readfile(saved).modelspace().query("CIRCLE")) != 1:
        q.failures.append("xarea left marker circles in the drawing")

    # A hatch: its outer loop less its island.
    def hatched(msp):
        hatch = msp.add_hatch()
        hatch.paths.add_polyline_path([(100, 100), (110, 100), (110, 110), (100, 110)], is_closed=True, flags=1)
        island = hatch.paths.add_edge_path(flags=16)
        island.add_arc((105, 105), 2, 0, 360)
    hatched_dxf = drawing(os.path.join(work, "hatched.dxf"), hatched)
    out = q.run("xarea_hatch", ["xarea", "E", "100,105", ""], hatched_dxf)
    q.expect("xarea_hatch", f"Area = {100 - 4 * math.pi:.2f} mm^2", out)

    # Counts go to the clipboard; xecount's markers go when it ends.
    out = q.run("xecount", ["xecount", "1,0", "21,20", "55,50", ""], shapes_dxf, saved)
    q.expect("xecount", "Count = 3", out)
    if len(ezdxf.readfile(saved).modelspace()) != 3:
        q.failures.append("xecount left marker circles in the drawing")
    # Counts go to the clipboard.
    out = q.run("xsecount", ["xsecount", "1,0", "21,20", "55,50", ""], shapes_dxf)
    q.expect("xsecount", "Count = 3", out)
    if q.clipboard() != "3":
        q.failures.append(f"xsecount put {q.clipboard()!r} on the clipboard")

    # The clipboard number "12.5mm", xmulti with bad input, the total kept through a save.
    q.clipboard("12.5mm")
    total1 = os.path.join(work, "total1.dxf")
    q.run("xadd", ["xclear", "xadd", "xadd", "xread"], empty, total1)
    if abs(ezdxf.readfile(total1).header.get("$USERR5", 0.0) - 25.0) > 1e-9:
        q.failures.append(f"USERR5 after two xadd is {ezdxf.readfile(total1).header.get('$USERR5')}")
    q.clipboard("5")
    total2 = os.path.join(work, "total2.dxf")
    out = q.run("xsub", ["xsub", "xread"], total1, total2)
    q.expect("xsub", "20.00", out)
    if abs(ezdxf.readfile(total2).header.get("$USERR5", 0.0) - 20.0) > 1e-9:
        q.failures.append(f"USERR5 after reload and xsub is {ezdxf.readfile(total2).header.get('$USERR5')}")
    # A length taken by xlen in one run is added by xadd in the next.
    total3 = os.path.join(work, "total3.dxf")
    q.run("xlen_to_clipboard", ["xlen", "0,0", "6,8"], empty)
    q.run("xadd_length", ["xclear", "xadd"], empty, total3)
    if abs(ezdxf.readfile(total3).header.get("$USERR5", 0.0) - 10.0) > 1e-9:
        q.failures.append(f"USERR5 after xlen and xadd is {ezdxf.readfile(total3).header.get('$USERR5')}")
    os.remove(os.path.join(work, "state", "qvad", "clipboard.txt"))
    out = q.run("xmulti_empty", ["xmulti"], empty)
    q.expect("xmulti_empty", "Read the clipboard data error!", out)
    q.clipboard("4")
    out = q.run("xmulti_bad", ["xmulti", "abc"], empty)
    q.expect("xmulti_bad", "Input errors!", out)
    if q.clipboard() != "4":
        q.failures.append("xmulti with bad input changed the clipboard")
    out = q.run("xmulti", ["xmulti", "2.5"], empty)
    if q.clipboard() != "10.00":
        q.failures.append(f"xmulti put {q.clipboard()!r} on the clipboard")

    # The settings dialog writes XQuery.ini on OK; the next command uses it.
    q.settings()
    q.run("xcarf", ["xcarf", "4", "", "", "0.000", "", "", ""], empty)
    out = q.run("xlen_after_xcarf", ["xlen", "0,0", "1,0"], empty)
    q.expect("xlen_after_xcarf", "Length = 0.250,", out)

    # CalcDist along three points, starting again with First.
    out = q.run("calcdist", ["CalcDist", "0,0", "3,4", "first", "10,10", "10,12", ""], empty)
    q.expect("calcdist", "Calculated distance = 5.000000", out)
    q.expect("calcdist", "Calculated distance = 7.000000", out)

    for failure in q.failures:
        print("FAIL:", failure)
    if q.failures:
        sys.exit(1)
    print("quantities: all checks passed")


main()
