#!/usr/bin/python3
"""Write a large valid R2018 drawing for load and save benchmarks.

    make_big_drawing.py OUT [--mb 100] [--verify]

ezdxf builds the tables, the block with attributes and the objects; the bulk
of the ENTITIES section (lines, arcs, circles, light-weight polylines, texts,
block references with attributes, over four layers) is written here as tags,
because building 100 MB through ezdxf's entity objects takes minutes.
--verify loads the result with ezdxf and runs its audit.
"""
import argparse
import io
import os
import re
import sys
import time

import ezdxf

LAYERS = {"WALLS": 1, "DOORS": 3, "TEXTS": 5, "FURNITURE": 30}
BLOCK = "BIGBLOCK"


def skeleton():
    """An empty R2018 drawing as text, and the model space's block record."""
    doc = ezdxf.new("R2018", setup=True)
    doc.units = ezdxf.units.MM
    for name, colour in LAYERS.items():
        doc.layers.add(name, color=colour)
    block = doc.blocks.new(BLOCK, base_point=(0, 0))
    block.add_circle((0, 0), 0.5)
    block.add_lwpolyline([(-0.5, -0.5), (0.5, -0.5), (0.5, 0.5), (-0.5, 0.5)], close=True)
    block.add_attdef("NUMBER", (0, 0.75), dxfattribs={"height": 0.25})
    block.add_attdef("NAME", (0, -1.0), dxfattribs={"height": 0.2})
    stream = io.StringIO()
    doc.write(stream)
    return stream.getvalue(), doc.modelspace().block_record_handle


class Handles:
    def __init__(self, first: int):
        self.next = first

    def take(self) -> str:
        handle = self.next
        self.next += 1
        return f"{handle:X}"


def entity_group(i: int, handles: Handles, owner: str) -> str:
    """One of each kind, placed on a 1000 x 1000 grid with irregular offsets
    so the numbers have the length real coordinates have."""
    x = (i % 1000) * 10.0 + (i * 0.618033988749895) % 1.0
    y = (i // 1000) * 10.0 + (i * 0.414213562373095) % 1.0
    h = [handles.take() for _ in range(9)]
    common = f"330\n{owner}\n100\nAcDbEntity\n"
    return (
        f"  0\nLINE\n  5\n{h[0]}\n{common}  8\nWALLS\n100\nAcDbLine\n"
        f" 10\n{x!r}\n 20\n{y!r}\n 30\n0.0\n 11\n{x + 7.5!r}\n 21\n{y + 2.25!r}\n 31\n0.0\n"
        f"  0\nARC\n  5\n{h[1]}\n{common}  8\nWALLS\n 62\n{1 + i % 255}\n100\nAcDbCircle\n"
        f" 10\n{x + 2.0!r}\n 20\n{y + 2.0!r}\n 30\n0.0\n 40\n{1.0 + (i % 7) / 3.0!r}\n"
        f"100\nAcDbArc\n 50\n{(i * 13) % 360}.0\n 51\n{(i * 13 + 135) % 360}.0\n"
        f"  0\nCIRCLE\n  5\n{h[2]}\n{common}  8\nFURNITURE\n100\nAcDbCircle\n"
        f" 10\n{x + 5.0!r}\n 20\n{y + 5.0!r}\n 30\n0.0\n 40\n{0.5 + (i % 5) / 7.0!r}\n"
        f"  0\nLWPOLYLINE\n  5\n{h[3]}\n{common}  8\nDOORS\n100\nAcDbPolyline\n 90\n4\n 70\n1\n"
        f" 43\n0.0\n 10\n{x!r}\n 20\n{y + 6.0!r}\n 10\n{x + 3.0!r}\n 20\n{y + 6.0!r}\n 42\n0.5\n"
        f" 10\n{x + 3.0!r}\n 20\n{y + 9.0!r}\n 10\n{x!r}\n 20\n{y + 9.0!r}\n"
        f"  0\nTEXT\n  5\n{h[4]}\n{common}  8\nTEXTS\n100\nAcDbText\n"
        f" 10\n{x + 0.5!r}\n 20\n{y + 0.5!r}\n 30\n0.0\n 40\n0.35\n  1\nRoom {i} east wing\n"
        f" 50\n{(i % 8) * 45}.0\n100\nAcDbText\n"
        f"  0\nINSERT\n  5\n{h[5]}\n{common}  8\nFURNITURE\n100\nAcDbBlockReference\n 66\n1\n"
        f"  2\n{BLOCK}\n 10\n{x + 8.0!r}\n 20\n{y + 8.0!r}\n 30\n0.0\n 50\n{(i * 7) % 360}.0\n"
        f"  0\nATTRIB\n  5\n{h[6]}\n330\n{h[5]}\n100\nAcDbEntity\n  8\nFURNITURE\n100\nAcDbText\n"
        f" 10\n{x + 8.0!r}\n 20\n{y + 8.75!r}\n 30\n0.0\n 40\n0.25\n  1\n{i}\n"
        f"100\nAcDbAttribute\n280\n0\n  2\nNUMBER\n 70\n0\n"
        f"  0\nATTRIB\n  5\n{h[7]}\n330\n{h[5]}\n100\nAcDbEntity\n  8\nFURNITURE\n100\nAcDbText\n"
        f" 10\n{x + 8.0!r}\n 20\n{y + 7.0!r}\n 30\n0.0\n 40\n0.2\n  1\nchair type {i % 17}\n"
        f"100\nAcDbAttribute\n280\n0\n  2\nNAME\n 70\n0\n"
        f"  0\nSEQEND\n  5\n{h[8]}\n330\n{h[5]}\n100\nAcDbEntity\n  8\nFURNITURE\n"
    )


def write(out: str, megabytes: float) -> int:
    """Returns the number of entity groups written."""
    text, owner = skeleton()
    marker = "  0\nSECTION\n  2\nENTITIES\n"
    head, tail = text.split(marker, 1)
    seed = re.search(r"\$HANDSEED\n  5\n([0-9A-Fa-f]+)\n", head)
    handles = Handles(int(seed.group(1), 16))
    budget = megabytes * 1e6 - len(text)
    bulk = out + ".entities.tmp"
    groups = 0
    with open(bulk, "w", encoding="utf-8", newline="\n", buffering=1 << 20) as fp:
        written = 0
        while written < budget:
            chunk = "".join(entity_group(groups + k, handles, owner) for k in range(100))
            fp.write(chunk)
            written += len(chunk)
            groups += 100
    # The seed must lie beyond every handle in the file, so the header comes last.
    head = head[:seed.start(1)] + f"{handles.next:X}" + head[seed.end(1):]
    with open(out, "w", encoding="utf-8", newline="\n") as fp:
        fp.write(head + marker)
        with open(bulk, encoding="utf-8") as src:
            while block := src.read(1 << 22):
                fp.write(block)
        fp.write(tail)
    os.remove(bulk)
    return groups


def verify(path: str) -> int:
    doc = ezdxf.readfile(path)
    auditor = doc.audit()
    for error in auditor.errors[:10]:
        print(f"audit error: {error.message}")
    print(f"ezdxf: {doc.dxfversion}, {len(doc.modelspace())} model space entities, "
          f"{len(auditor.errors)} audit errors, {len(auditor.fixes)} fixes")
    return 1 if auditor.has_errors else 0


def main(argv) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("out")
    parser.add_argument("--mb", type=float, default=100.0, help="approximate size in MB")
    parser.add_argument("--verify", action="store_true", help="load with ezdxf and audit")
    args = parser.parse_args(argv)
    start = time.perf_counter()
    groups = write(args.out, args.mb)
    seconds = time.perf_counter() - start
    size = os.path.getsize(args.out) / 1e6
    print(f"wrote {args.out}: {size:.1f} MB, {groups * 6} entities with {groups * 2} attributes, "
          f"{seconds:.1f} s")
    return verify(args.out) if args.verify else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
