"""Writes a drawing of lines, arcs, circles and lightweight polylines for the Overkill benchmark: about
20% of the objects are duplicates of others (some drawn backwards) and 10% overlap another on the same
carrier. The tables come from ezdxf; the entities are written as text, which is much faster for a
million of them. usage: make_drawing.py OUT.dxf COUNT [SEED]"""
import io
import math
import random
import sys

import ezdxf

LAYERS = ["0", "WALLS", "DOORS", "GRID"]


def base_document():
    doc = ezdxf.new("R2000")
    for name in LAYERS[1:]:
        doc.layers.add(name)
    return doc


def fmt(v):
    return repr(round(v, 9))


class Writer:
    def __init__(self, first_handle, owner):
        self.handle = first_handle
        self.owner = owner
        self.out = []

    def head(self, kind, layer, color):
        self.handle += 1
        self.out.append(f"0\n{kind}\n5\n{self.handle:X}\n330\n{self.owner}\n100\nAcDbEntity\n8\n{layer}\n")
        if color != 256:
            self.out.append(f"62\n{color}\n")

    def line(self, layer, color, a, b):
        self.head("LINE", layer, color)
        self.out.append(f"100\nAcDbLine\n10\n{fmt(a[0])}\n20\n{fmt(a[1])}\n30\n0.0\n"
                        f"11\n{fmt(b[0])}\n21\n{fmt(b[1])}\n31\n0.0\n")

    def circle(self, layer, color, c, r):
        self.head("CIRCLE", layer, color)
        self.out.append(f"100\nAcDbCircle\n10\n{fmt(c[0])}\n20\n{fmt(c[1])}\n30\n0.0\n40\n{fmt(r)}\n")

    def arc(self, layer, color, c, r, start, end):
        self.head("ARC", layer, color)
        self.out.append(f"100\nAcDbCircle\n10\n{fmt(c[0])}\n20\n{fmt(c[1])}\n30\n0.0\n40\n{fmt(r)}\n"
                        f"100\nAcDbArc\n50\n{fmt(start)}\n51\n{fmt(end)}\n")

    def polyline(self, layer, color, points, closed):
        self.head("LWPOLYLINE", layer, color)
        self.out.append(f"100\nAcDbPolyline\n90\n{len(points)}\n70\n{1 if closed else 0}\n")
        for x, y, bulge in points:
            self.out.append(f"10\n{fmt(x)}\n20\n{fmt(y)}\n")
            if bulge:
                self.out.append(f"42\n{fmt(bulge)}\n")


def generate(writer, count, rng):
    # Originals are kept as (kind, args) so duplicates and overlaps can be drawn from them.
    made = []
    span = math.sqrt(count) * 20.0
    for i in range(count):
        roll = rng.random()
        if made and roll < 0.2:
            kind, layer, color, args = rng.choice(made)
            if kind == "line" and rng.random() < 0.5:
                args = (args[1], args[0])  # the same line drawn backwards
            emit(writer, kind, layer, color, args)
            continue
        if made and roll < 0.3:
            kind, layer, color, args = rng.choice(made)
            if kind == "line":
                a, b = args
                t = rng.uniform(0.2, 0.8)
                mid = (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t)
                far = (b[0] + (b[0] - a[0]) * 0.5, b[1] + (b[1] - a[1]) * 0.5)
                emit(writer, "line", layer, color, (mid, far))
                continue
            if kind == "arc":
                c, r, s, e = args
                emit(writer, "arc", layer, color, (c, r, (s + e) / 2.0, e + 40.0))
                continue
        layer = rng.choice(LAYERS)
        color = rng.choice([256, 256, 1, 3])
        x, y = rng.uniform(0, span), rng.uniform(0, span)
        pick = rng.random()
        if pick < 0.4:
            ang = rng.choice([0.0, math.pi / 2, rng.uniform(0, math.pi)])
            length = rng.uniform(1, 30)
            args = ((x, y), (x + length * math.cos(ang), y + length * math.sin(ang)))
            kind = "line"
        elif pick < 0.6:
            args = ((x, y), rng.uniform(0.5, 10))
            kind = "circle"
        elif pick < 0.8:
            s = rng.uniform(0, 300)
            args = ((x, y), rng.uniform(0.5, 10), s, s + rng.uniform(10, 170))
            kind = "arc"
        else:
            pts = [(x, y, 0.0)]
            for _ in range(rng.randint(1, 5)):
                px, py, _b = pts[-1]
                pts.append((px + rng.uniform(-10, 10), py + rng.uniform(-10, 10),
                            rng.choice([0.0, 0.0, 0.4])))
            args = (pts, rng.random() < 0.3)
            kind = "polyline"
        made.append((kind, layer, color, args))
        emit(writer, kind, layer, color, args)


def emit(writer, kind, layer, color, args):
    getattr(writer, kind)(layer, color, *args)


def main():
    out, count = sys.argv[1], int(sys.argv[2])
    rng = random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 1)
    doc = base_document()
    owner = doc.modelspace().block_record.dxf.handle
    first = int(doc.entitydb.handles.next(), 16) + 16
    writer = Writer(first, owner)
    generate(writer, count, rng)
    doc.header["$HANDSEED"] = f"{writer.handle + 1:X}"
    stream = io.StringIO()
    doc.write(stream)
    dxf = stream.getvalue()
    marker = "  2\nENTITIES\n"
    at = dxf.index(marker) + len(marker)
    with open(out, "w", encoding="utf-8") as f:
        f.write(dxf[:at])
        f.write("".join(writer.out))
        f.write(dxf[at:])


main()
