#!/usr/bin/python3
"""Load and save every corpus drawing with qvad and check what it saved.

    corpus_roundtrip.py QVAD [--jobs 2] [--limit N] [--only SUBSTRING]
                             [--out DIR] [--corpus DIR ...]

Without --corpus it reads the shared sample drawings and LibreCAD's library.
Prints one line per failing drawing, what ezdxf makes of the originals, and
last "N passed, N failed"; the exit status is nonzero on any failure.
"""
import argparse
import collections
import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "tools"))
import roundtrip  # noqa: E402

HERE = Path(__file__).resolve().parent
DEFAULT_CORPORA = [HERE.parents[1].parent / "shared" / "corpus" / "dxf-samples",
                   Path("/usr/share/librecad")]


def corpus_files(roots):
    """(unique flat name, path) for every .dxf below the roots, any case."""
    for root in roots:
        root = Path(root)
        for folder, _dirs, files in sorted(os.walk(root)):
            for name in sorted(files):
                if name.lower().endswith(".dxf"):
                    path = Path(folder) / name
                    flat = str(path.relative_to(root)).replace(os.sep, "__")
                    yield f"{root.name}__{flat}", path


def facts(results) -> str:
    states = collections.Counter(r.original for r in results)
    return (f"ezdxf on the {len(results)} originals: {states['audit-errors']} audit with errors, "
            f"{states['recover']} need the recovery loader, {states['unreadable']} cannot be read "
            f"by either loader, {states['audit-crash']} load but crash its audit")


def main(argv) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("qvad")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--limit", type=int, default=0, help="check only the first N drawings")
    parser.add_argument("--only", default="", help="check only paths containing this text")
    parser.add_argument("--out", help="keep the saved drawings here")
    parser.add_argument("--corpus", action="append", help="folder of drawings (repeatable)")
    args = parser.parse_args(argv)

    roots = args.corpus or DEFAULT_CORPORA
    missing = [str(r) for r in roots if not Path(r).is_dir()]
    if missing:
        print(f"corpus folder missing: {', '.join(missing)}")
        return 2
    drawings = [(n, p) for n, p in corpus_files(roots) if args.only in str(p)]
    if args.limit:
        drawings = drawings[:args.limit]
    if not drawings:
        print("no drawings selected")
        return 2
    outdir, holder = roundtrip.scratch_dir(args.out)
    try:
        results = roundtrip.run_all(args.qvad, drawings, outdir, args.jobs,
                                    report=lambda line: print(line, flush=True))
    finally:
        if holder:
            holder.cleanup()
    print(facts(results))
    print(roundtrip.summary(results))
    return 1 if any(r.problems for r in results) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
