"""Loading drawings with ezdxf the way the checks need it.

The saved file must load with the plain loader; an original may need the
recovery loader or may be unreadable, and the comparison has to know which.
"""
import collections
import logging
from dataclasses import dataclass
from typing import Optional

import ezdxf
import ezdxf.recover
from ezdxf.lldxf.tagger import binary_tags_loader
from ezdxf.lldxf.validator import is_binary_dxf_file

# ezdxf logs every repair it makes; the checks report what matters themselves.
logging.getLogger("ezdxf").setLevel(logging.CRITICAL)


@dataclass
class Original:
    doc: Optional[object]  # ezdxf Drawing, None when unreadable
    how: str  # "plain", "recover" or "unreadable"
    error: str = ""


def load_plain(path):
    """The saved file's loader: no recovery, exceptions propagate."""
    return ezdxf.readfile(str(path))


def load_original(path) -> Original:
    try:
        return Original(ezdxf.readfile(str(path)), "plain")
    except Exception as plain_error:  # any loader failure means: try recovery
        try:
            doc, _auditor = ezdxf.recover.readfile(str(path))
            return Original(doc, "recover", describe(plain_error))
        except Exception as error:
            return Original(None, "unreadable", describe(error))


def describe(error: BaseException) -> str:
    text = str(error).strip().splitlines()
    return f"{type(error).__name__}: {text[0] if text else ''}"


def _ascii_pairs(data: bytes):
    lines = data.split(b"\n")
    for i in range(0, len(lines) - 1, 2):
        code = lines[i].strip()
        value = lines[i + 1].rstrip(b"\r")
        try:
            yield int(code), value.strip().decode("latin-1")
        except ValueError:
            return  # damaged structure: stop where it stops making sense


def _tag_pairs(data: bytes, binary: bool):
    if binary:
        for tag in binary_tags_loader(data):
            yield tag.code, tag.value
    else:
        yield from _ascii_pairs(data)


# Entity types that carry no handle of their own in some valid files.
_HANDLE_OPTIONAL = {"SECTION", "ENDSEC", "EOF", "BLOCK", "ENDBLK", "ENDTAB", "CLASS"}


@dataclass
class RawFacts:
    """What the file itself says, before ezdxf repairs or adds anything."""
    handles_reliable: bool = False
    block_names: Optional[set] = None  # lower case; None if unknown
    entity_handles: Optional[list] = None  # handles of the entities, as the file writes them


def _records(path):
    """[type, handle, section, name] per structure record of the file."""
    data = open(path, "rb").read()
    binary = is_binary_dxf_file(str(path))
    section = None
    record = None
    records = []
    expect_section_name = False
    for code, value in _tag_pairs(data, binary):
        if code == 0:
            if value == "EOF":
                break
            record = [value, None, section, None]
            records.append(record)
            expect_section_name = value == "SECTION"
            continue
        if code == 2 and expect_section_name:
            section = record[2] = value
            expect_section_name = False
            continue
        if section in (None, "HEADER", "CLASSES") or record is None:
            continue
        if code in (5, 105) and record[1] is None:
            record[1] = str(value)
        elif code == 2 and record[3] is None:
            record[3] = str(value)
    return records


def scan_raw(path) -> RawFacts:
    """Handles are reliable when every entity has its own non-empty handle:
    ezdxf invents handles for entities that have none and renumbers
    duplicates, so only then does a handle name the same entity in the
    original and in the saved file. The block names tell real blocks from
    those ezdxf adds while upgrading R13/R14 files."""
    try:
        records = _records(path)
    except Exception:
        return RawFacts()
    seen = collections.Counter()
    reliable = True
    for kind, handle, section, _name in records:
        if handle is not None:
            seen[handle.upper()] += 1
        if section in ("ENTITIES", "BLOCKS") and kind not in _HANDLE_OPTIONAL:
            if not handle or not _is_hex(handle) or int(handle, 16) == 0:
                reliable = False
    reliable = reliable and all(n == 1 for n in seen.values())
    blocks = {name.lower() for kind, _h, section, name in records
              if kind == "BLOCK" and section == "BLOCKS" and name}
    entity_handles = [h for kind, h, section, _n in records
                      if section in ("ENTITIES", "BLOCKS") and kind not in _HANDLE_OPTIONAL and h]
    return RawFacts(reliable, blocks, entity_handles)


def _is_hex(text: str) -> bool:
    try:
        int(text, 16)
        return True
    except ValueError:
        return False
