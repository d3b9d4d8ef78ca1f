#!/usr/bin/python3
"""Writes examples/site-plan.dxf, the README's example drawing: a small site plan with the things
drafters clean up and annotate every day (stacked single-line notes, duplicated and overlapping
lines, a titled block with attributes, dimensions, hatches and extended data)."""
import math
import sys

import ezdxf

out = sys.argv[1] if len(sys.argv) > 1 else "site-plan.dxf"
doc = ezdxf.new("R2018", setup=True)
doc.header["$INSUNITS"] = 6  # metres
for name, colour in [("PLOT", 1), ("BUILDING", 7), ("ROAD", 8), ("NOTES", 3), ("DIMS", 2), ("TREES", 82)]:
    doc.layers.add(name, color=colour)
doc.layers.add("OLD", color=9).lock()
msp = doc.modelspace()

msp.add_lwpolyline([(0, 0), (60, 0), (60, 40), (0, 40)], close=True, dxfattribs={"layer": "PLOT"})
house = [(15, 10), (40, 10), (40, 28), (15, 28)]
msp.add_lwpolyline(house, close=True, dxfattribs={"layer": "BUILDING", "const_width": 0.3})
msp.add_lwpolyline([(40, 14, 0), (46, 14, 0.4142), (46, 24, 0), (40, 24, 0)], format="xyb",
                   dxfattribs={"layer": "BUILDING"})
# Drawn twice, and once more in two overlapping pieces: what a clean-up tool should find.
msp.add_line((0, -6), (60, -6), dxfattribs={"layer": "ROAD"})
msp.add_line((60, -6), (0, -6), dxfattribs={"layer": "ROAD"})
msp.add_line((0, -12), (35, -12), dxfattribs={"layer": "ROAD"})
msp.add_line((30, -12), (60, -12), dxfattribs={"layer": "ROAD"})
msp.add_line((5, 5), (10, 5), dxfattribs={"layer": "OLD"})

tree = doc.blocks.new("TREE")
tree.add_circle((0, 0), 1.5)
tree.add_line((-1, 0), (1, 0))
tree.add_attdef("SPECIES", (0, -2.2), dxfattribs={"height": 0.5})
tree.add_attdef("HEIGHT", (0, -3.0), dxfattribs={"height": 0.5})
for i, (x, y) in enumerate([(5, 33), (10, 35), (52, 6), (55, 33)]):
    ref = msp.add_blockref("TREE", (x, y), dxfattribs={"layer": "TREES"})
    ref.add_auto_attribs({"SPECIES": ["Oak", "Lime", "Birch", "Oak"][i], "HEIGHT": f"{8 + i * 2} m"})

notes = ["GENERAL NOTES", "1. All dimensions in metres.", "2. Levels refer to site datum.",
         "3. Do not scale from this drawing."]
for i, line in enumerate(notes):
    msp.add_text(line, dxfattribs={"layer": "NOTES", "height": 0.8 if i else 1.0,
                                   "insert": (64, 38 - i * 1.4)})
msp.add_text("Gärtnerhaus – Süd", dxfattribs={"layer": "NOTES", "height": 1.2, "insert": (20, 19),
                                             "rotation": 0})
msp.add_text("ACCESS", dxfattribs={"layer": "ROAD", "height": 1.0, "insert": (28, -9), "rotation": 0})
msp.add_mtext("Existing hedge\\Pto be kept", dxfattribs={"layer": "NOTES", "char_height": 0.7,
                                                         "insert": (2, 44), "width": 12})

msp.add_linear_dim(base=(15, 6), p1=(15, 10), p2=(40, 10), dxfattribs={"layer": "DIMS"}).render()
msp.add_linear_dim(base=(11, 10), p1=(15, 10), p2=(15, 28), angle=90, dxfattribs={"layer": "DIMS"}).render()
msp.add_radius_dim(center=(5, 33), radius=1.5, angle=45, dxfattribs={"layer": "DIMS"}).render()

hatch = msp.add_hatch(color=252, dxfattribs={"layer": "BUILDING"})
hatch.paths.add_polyline_path(house, is_closed=True)
msp.add_circle((30, 34), 2.5, dxfattribs={"layer": "PLOT"})
msp.add_arc((30, 34), 4, 200, 340, dxfattribs={"layer": "PLOT"})

doc.appids.add("SITEDATA")
well = msp.add_point((30, 34), dxfattribs={"layer": "PLOT"})
well.set_xdata("SITEDATA", [(1000, "WELL"), (1040, 12.5), (1070, 3)])

paper = doc.layout("Layout1")
paper.add_viewport(center=(150, 100), size=(260, 180), view_center_point=(30, 17), view_height=60)
paper.add_text("SITE PLAN 1:250", dxfattribs={"height": 5, "insert": (20, 10)})
doc.saveas(out)
