#!/usr/bin/python3
"""Independent checks of a DXF file qvad saved, using ezdxf.

    dxfcheck.py audit FILE          exit 0 when ezdxf loads FILE without
                                    recovery and its audit finds no error
    dxfcheck.py compare ORIG SAVED  exit 0 when SAVED holds ORIG's entities,
                                    layers, colours, texts and extended data

Imported by the round-trip scripts for audit_file, audit_doc and compare_files.
"""
import sys

import dxfdiff
import dxfload

compare_files = dxfdiff.compare_files
load_original = dxfload.load_original


def audit_doc(doc) -> list:
    """ezdxf's audit errors as text lines (the audit may change doc)."""
    try:
        auditor = doc.audit()
    except Exception as error:
        return [f"audit crashed: {dxfload.describe(error)}"]
    return [f"audit error {e.code}: {e.message}" for e in auditor.errors]


def audit_file(path) -> list:
    try:
        doc = dxfload.load_plain(path)
    except Exception as error:
        return [f"does not load without recovery: {dxfload.describe(error)}"]
    return audit_doc(doc)


def main(argv) -> int:
    if len(argv) == 2 and argv[0] == "audit":
        problems = audit_file(argv[1])
    elif len(argv) == 3 and argv[0] == "compare":
        problems, original = compare_files(argv[1], argv[2])
        if original.doc is None:
            print(f"note: ezdxf cannot read the original ({original.error}); nothing compared")
    else:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    for line in problems:
        print(line)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
