#!/usr/bin/python3
"""Prove the checker itself: checker_selftest.py WORKDIR

The round-trip tests are only as good as dxfcheck: it must pass faithful
copies (rewritten by ezdxf, also in a newer DXF version or without handles)
and fail every mutation in tools/mutations.py, and its audit must reject
files ezdxf cannot load or finds errors in. Ends with "N passed, N failed".
"""
import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "tools"))
import dxfcheck  # noqa: E402
import dxfload  # noqa: E402
import ezdxf  # noqa: E402
import make_entity_drawings  # noqa: E402
import mutations  # noqa: E402


def resave(src, dst, change=None, version=None):
    doc = ezdxf.readfile(str(src))
    if change:
        change(doc)
    if version:
        doc.dxfversion = version
    doc.saveas(str(dst))


def strip_handles(src, dst):
    """An R12 file as old programs write it: entities without handles."""
    lines = Path(src).read_text(encoding="cp1252").splitlines()
    out, section = [], None
    for code, value in zip(lines[0::2], lines[1::2]):
        if code.strip() == "2" and out and out[-1].strip() == "SECTION":
            section = value.strip()
        if code.strip() == "5" and section in ("ENTITIES", "BLOCKS"):
            continue
        out += [code, value]
    Path(dst).write_text("\n".join(out) + "\n", encoding="cp1252")


def same(orig, saved):
    problems = dxfcheck.compare_files(orig, saved)[0] + dxfcheck.audit_file(saved)
    return "; ".join(problems[:2]) if problems else None


def differs(orig, saved):
    return None if dxfcheck.compare_files(orig, saved)[0] else "difference not noticed"


def faithful_copies(gen, work):
    for src in sorted(gen.glob("*.dxf")):
        copy = work / f"copy_{src.name}"
        resave(src, copy)
        yield f"ezdxf copy of {src.name} passes", same(src, copy)
        # ezdxf cannot turn the ACIS text of R2000 into the binary of R2013+
        if "R2000" in src.name and not src.name.startswith(("solids", "all")):
            newer = work / f"R2018_{src.name}"
            resave(src, newer, version="AC1032")
            yield f"{src.name} rewritten as R2018 passes", same(src, newer)
    bare = work / "no_handles_all_R12.dxf"
    strip_handles(gen / "all_R12.dxf", bare)
    copy = work / "copy_no_handles_all_R12.dxf"
    resave(bare, copy)
    yield "R12 without handles, matched by order, passes", \
        "handles wrongly trusted" if dxfload.scan_raw(bare).handles_reliable else same(bare, copy)
    tiny = work / "tiny_noise.dxf"
    resave(gen / "curves_R2018.dxf", tiny, lambda d: _scale_first_line(d, 1 + 1e-13))
    yield "rounding noise of 1e-13 passes", same(gen / "curves_R2018.dxf", tiny)


def _scale_first_line(doc, factor):
    line = next(e for e in doc.modelspace() if e.dxftype() == "LINE")
    line.dxf.end = line.dxf.end * factor


def mutated_copies(gen, work):
    for i, (name, (drawing, change)) in enumerate(mutations.MUTATIONS.items()):
        dst = work / f"mutation_{i:02d}_{drawing}"
        resave(gen / drawing, dst, change)
        yield f"{name} is noticed", differs(gen / drawing, dst)
    bare = work / "no_handles_polylines_R12.dxf"
    strip_handles(gen / "polylines_R12.dxf", bare)
    for name, change in (("vertex moved", mutations.move_polyline_vertex),
                         ("entity renumbered", mutations.new_handle)):
        dst = work / f"no_handles_{change.__name__}.dxf"
        resave(bare, dst, change if change is not mutations.new_handle else _delete_first)
        yield f"without handles: {name} is noticed", differs(bare, dst)


def _delete_first(doc):
    msp = doc.modelspace()
    msp.delete_entity(next(iter(msp)))


def layer_renames(work):
    """ezdxf rejects some layer names, so a saved file may rename them, but
    only consistently."""
    def drawing(path, *layers):
        doc = ezdxf.new("R2000")
        for i, layer in enumerate(layers):
            line = doc.modelspace().add_line((0, i), (1, i))
            line.dxf.unprotected_set("layer", layer)
        doc.saveas(str(path))
    orig, good, bad = work / "bad_layer.dxf", work / "renamed.dxf", work / "renamed_twice.dxf"
    drawing(orig, "bad?name", "bad?name")
    drawing(good, "bad_name", "bad_name")
    drawing(bad, "bad_name", "bad_other")
    yield "consistent rename of an invalid layer name passes", \
        "; ".join(dxfcheck.compare_files(orig, good)[0]) or None
    yield "inconsistent rename is noticed", differs(orig, bad)
    yield "audit rejects an invalid layer name", \
        None if dxfcheck.audit_file(orig) else "audit found nothing"


def broken_files(gen, work):
    truncated = work / "truncated.dxf"
    data = (gen / "all_R2000.dxf").read_bytes()
    truncated.write_bytes(data[: len(data) // 2])
    yield "audit rejects a truncated file", \
        None if dxfcheck.audit_file(truncated) else "audit found nothing"
    yield "comparison rejects a truncated saved file", differs(gen / "all_R2000.dxf", truncated)


def main(argv) -> int:
    if len(argv) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    work = Path(argv[0])
    shutil.rmtree(work, ignore_errors=True)
    gen = work / "generated"
    make_entity_drawings.write_all(gen)
    passed = failed = 0
    for checks in (faithful_copies(gen, work), mutated_copies(gen, work),
                   layer_renames(work), broken_files(gen, work)):
        for name, problem in checks:
            if problem:
                failed += 1
                print(f"FAIL {name}: {problem}", flush=True)
            else:
                passed += 1
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
