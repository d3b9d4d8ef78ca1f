#!/usr/bin/python3
"""The reference figures for bench_dxf_io: how long ezdxf takes to load FILE
and how much memory it needs, as "key value" lines.

    ezdxf_load_time.py FILE
"""
import os
import resource
import sys
import time

import ezdxf


def main(argv) -> int:
    if len(argv) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    path = argv[0]
    megabytes = os.path.getsize(path) / 1e6
    start = time.perf_counter()
    doc = ezdxf.readfile(path)
    seconds = time.perf_counter() - start
    # ru_maxrss is in kilobytes on Linux; the interpreter's own share is included
    peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024.0
    print(f"file_mb {megabytes:.1f}")
    print(f"ezdxf_load_s {seconds:.3f} ezdxf_load_mb_per_s {megabytes / seconds:.1f}")
    print(f"ezdxf_peak_mb {peak:.0f} ezdxf_peak_ratio {peak / megabytes:.2f}")
    print(f"entities {len(doc.entitydb)}")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
