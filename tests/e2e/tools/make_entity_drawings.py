#!/usr/bin/python3
"""Write the generated test drawings: make_entity_drawings.py OUTDIR

One drawing per entity group and DXF version (GROUP_VERSION.dxf), one with
every group (all_VERSION.dxf), and two R2000 drawings in single-byte and
double-byte code pages. Prints the written paths, one a line.
"""
import sys
from pathlib import Path

import ezdxf
from ezdxf import units
from ezdxf.tools.codepage import toencoding

import entity_groups

VERSIONS = ("R12", "R2000", "R2007", "R2018")
# Spread the groups over the drawing so the all-in-one file stays legible.
SPACING = 50.0


def new_drawing(version):
    doc = ezdxf.new(version, setup=True)
    if version != "R12":
        # ezdxf defaults to metres, which makes printers pick a paper 1000 times too big
        doc.units = units.MM
    entity_groups.setup_tables(doc)
    return doc


def group_drawing(version, group):
    doc = new_drawing(version)
    entity_groups.GROUPS[group](doc, doc.modelspace(), (0.0, 0.0))
    return doc


def all_in_one(version):
    doc = new_drawing(version)
    for i, add in enumerate(entity_groups.GROUPS.values()):
        add(doc, doc.modelspace(), ((i % 3) * SPACING, (i // 3) * SPACING))
    return doc


def code_page_drawing(code_page, sample):
    """Texts stored in a code page other than UTF-8, so a reader must decode
    by $DWGCODEPAGE rather than assume one."""
    doc = group_drawing("R2000", "texts")
    doc.encoding = toencoding(code_page)
    msp = doc.modelspace()
    msp.add_text(sample, dxfattribs={"insert": (0, -5), "height": 1, "layer": "TEXTS"})
    msp.add_mtext(f"{sample}\\P{sample}", dxfattribs={"insert": (0, -8), "char_height": 1})
    block = doc.blocks.new("QVCP")
    block.add_attdef("CP", (0, 0), sample)
    msp.add_blockref("QVCP", (20, -5)).add_auto_attribs({"CP": sample})
    doc.layers.add(f"LAYER {sample}", color=2)
    msp.add_line((0, -10), (10, -10), dxfattribs={"layer": f"LAYER {sample}"})
    return doc


def drawings():
    """(file name, document) for every drawing, built lazily."""
    for version in VERSIONS:
        for group in entity_groups.GROUPS:
            doc = group_drawing(version, group)
            if len(doc.modelspace()):
                yield f"{group}_{version}.dxf", doc
        yield f"all_{version}.dxf", all_in_one(version)
    yield "codepage_ANSI_1252_R2000.dxf", code_page_drawing("ANSI_1252", entity_groups.GERMAN)
    yield "codepage_ANSI_936_R2000.dxf", code_page_drawing("ANSI_936", entity_groups.CHINESE)


def write_all(outdir) -> list:
    outdir = Path(outdir)
    outdir.mkdir(parents=True, exist_ok=True)
    written = []
    for name, doc in drawings():
        doc.saveas(outdir / name)
        written.append(outdir / name)
    return written


def main(argv) -> int:
    if len(argv) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    for path in write_all(argv[0]):
        print(path)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
