#!/usr/bin/python3
"""Round-trip the generated drawings through qvad: entity_roundtrip.py QVAD WORKDIR

Writes every entity type in R12, R2000, R2007 and R2018 and two code pages
into WORKDIR/generated, has qvad load and save each into WORKDIR/saved, and
checks the saved files with ezdxf. Ends with "N passed, N failed".
"""
import argparse
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "tools"))
import make_entity_drawings  # noqa: E402
import roundtrip  # noqa: E402


def main(argv) -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("qvad")
    parser.add_argument("workdir")
    parser.add_argument("--jobs", type=int, default=2)
    args = parser.parse_args(argv)

    work = Path(args.workdir)
    drawings = [(p.name, p) for p in make_entity_drawings.write_all(work / "generated")]
    results = roundtrip.run_all(args.qvad, drawings, work / "saved", args.jobs,
                                report=lambda line: print(line, flush=True))
    print(roundtrip.summary(results))
    return 1 if any(r.problems for r in results) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
