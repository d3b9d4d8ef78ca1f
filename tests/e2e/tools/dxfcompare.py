"""Does a saved drawing hold what the original held?

Both files are read by ezdxf, so the comparison works on ezdxf's model and is
neutral to the DXF version each file was written in. Entities are matched by
handle where the original's handles are trustworthy, else by position within
their layout or block.
"""
import math
from typing import Optional

from ezdxf.lldxf import validator

import dxffacts

REL_TOL = 1e-9
# Values that print as zero in one file may carry rounding noise in the other.
ABS_TOL = 1e-12
IGNORED_ATTRIBS = {"handle", "owner"}


class Diffs:
    """Collects the first differences; more than a screenful helps nobody."""

    def __init__(self, limit=20):
        self.items = []
        self.limit = limit

    def add(self, message: str):
        if len(self.items) < self.limit:
            self.items.append(message)

    @property
    def full(self) -> bool:
        return len(self.items) >= self.limit


class Context:
    def __init__(self, by_handle: bool, limit=20, recovered=False):
        self.by_handle = by_handle
        # ezdxf's recovery loader resets references to styles the original does not define.
        self.recovered = recovered
        self.diffs = Diffs(limit)
        self.layer_map = {}

    def same_layer(self, orig: str, saved: str) -> bool:
        """A layer name ezdxf calls invalid cannot survive a clean audit, so
        the saved file may rename it; it must do so consistently."""
        if orig == saved:
            return True
        if validator.is_valid_layer_name(orig) or not validator.is_valid_layer_name(saved):
            return False
        return self.layer_map.setdefault(orig, saved) == saved


def first_difference(a, b, path="") -> Optional[str]:
    if _is_number(a) and _is_number(b):
        if isinstance(a, int) and isinstance(b, int):
            equal = a == b
        else:
            equal = math.isclose(a, b, rel_tol=REL_TOL, abs_tol=ABS_TOL)
        return None if equal else f"{path}: {_show(a)} != {_show(b)}"
    if isinstance(a, str) and isinstance(b, str):
        a, b = dxffacts.text(a), dxffacts.text(b)
        if a == b:
            return None
        at = next((i for i, (x, y) in enumerate(zip(a, b)) if x != y), min(len(a), len(b)))
        if at < 30:
            return f"{path}: {_show(a)} != {_show(b)}"
        return f"{path}: from character {at}: {_show(a[at - 10:])} != {_show(b[at - 10:])}"
    if isinstance(a, dict) and isinstance(b, dict):
        for key in list(a) + [k for k in b if k not in a]:
            if key not in a or key not in b:
                return f"{path}.{key}: only in {'original' if key in a else 'saved'}"
            found = first_difference(a[key], b[key], f"{path}.{key}")
            if found:
                return found
        return None
    if _is_list(a) and _is_list(b):
        a, b = list(a), list(b)
        if len(a) != len(b):
            return f"{path}: {len(a)} items != {len(b)} items"
        for i, (x, y) in enumerate(zip(a, b)):
            found = first_difference(x, y, f"{path}[{i}]")
            if found:
                return found
        return None
    if _is_vector(a) and _is_vector(b):
        return first_difference(list(a), list(b), path)
    return None if a == b else f"{path}: {_show(a)} != {_show(b)}"


def _show(value, width=80) -> str:
    text = repr(value)
    return text if len(text) <= width else text[:width - 3] + "..."


def _is_number(v) -> bool:
    return isinstance(v, (int, float))


def _is_list(v) -> bool:
    return isinstance(v, (list, tuple))


def _is_vector(v) -> bool:
    return hasattr(v, "isclose") and hasattr(v, "x")


def _is_handle_code(code: int) -> bool:
    return code in (5, 105, 1005) or 320 <= code <= 369 or 390 <= code <= 399 \
        or 480 <= code <= 481


def _attrib(entity, key):
    """The attribute's value as a reader would see it: unset means default.
    Returns (supported, value); unsupported means the file's DXF version has
    no place for it."""
    definition = entity.dxf.dxfattribs.get(key)
    if definition is None:
        return False, None
    version = entity.doc.dxfversion if entity.doc else "AC1009"
    if definition.dxfversion > version:
        return False, None
    value = entity.dxf.get(key)
    return True, definition.default if value is None else value


def compare_attribs(orig, saved, ctx: Context, where: str, skip_handles=False, ignore=()):
    keys = list(orig.dxf.all_existing_dxf_attribs())
    keys += [k for k in saved.dxf.all_existing_dxf_attribs() if k not in keys]
    for key in keys:
        if key in IGNORED_ATTRIBS or key in ignore:
            continue
        definition = orig.dxf.dxfattribs.get(key) or saved.dxf.dxfattribs.get(key)
        ok_o, value_o = _attrib(orig, key)
        ok_s, value_s = _attrib(saved, key)
        if not (ok_o and ok_s):
            continue
        if definition is not None and _is_handle_code(definition.code):
            # References are compared only where handles are kept; a
            # reference one side lacks is an audit matter, not content.
            if skip_handles or not ctx.by_handle or value_o is None or value_s is None:
                continue
        if key in ("style", "dimstyle") and ctx.recovered and value_o == "Standard":
            continue
        if key == "layer" and isinstance(value_o, str) and isinstance(value_s, str):
            if not ctx.same_layer(dxffacts.text(value_o), dxffacts.text(value_s)):
                ctx.diffs.add(f"{where}: layer {value_o!r} != {value_s!r}")
            continue
        found = first_difference(value_o, value_s, key)
        if found:
            ctx.diffs.add(f"{where}: {found}")


def compare_xdata(orig, saved, ctx: Context, where: str):
    a, b = dxffacts.xdata(orig), dxffacts.xdata(saved)
    if not ctx.by_handle:
        # 1005 handles point at objects that got new handles.
        a = {app: [t for t in tags if t[0] != 1005] for app, tags in a.items()}
        b = {app: [t for t in tags if t[0] != 1005] for app, tags in b.items()}
    found = first_difference(a, b, "xdata")
    if found:
        ctx.diffs.add(f"{where}: {found}")


def compare_entities(orig, saved, ctx: Context, where: str):
    if orig.dxftype() != saved.dxftype():
        ctx.diffs.add(f"{where}: type {orig.dxftype()} != {saved.dxftype()}")
        return
    compare_attribs(orig, saved, ctx, where)
    members_o, members_s = dxffacts.members(orig), dxffacts.members(saved)
    if not ctx.by_handle:
        for facts in (members_o, members_s):
            _drop_handle_members(facts)
    found = first_difference(members_o, members_s, "")
    if found:
        ctx.diffs.add(f"{where}: {found.lstrip('.')}")
    compare_xdata(orig, saved, ctx, where)
    keys_o, keys_s = dxffacts.xdict_keys(orig), dxffacts.xdict_keys(saved)
    if keys_o != keys_s:
        ctx.diffs.add(f"{where}: extension dictionary keys {keys_o} != {keys_s}")
    subs_o, subs_s = dxffacts.sub_entities(orig), dxffacts.sub_entities(saved)
    if len(subs_o) != len(subs_s):
        ctx.diffs.add(f"{where}: {len(subs_o)} sub-entities != {len(subs_s)}")
    for i, (a, b) in enumerate(zip(subs_o, subs_s)):
        compare_entities(a, b, ctx, f"{where}/{a.dxftype()}[{i}]")


def _drop_handle_members(value):
    if isinstance(value, dict):
        for name in dxffacts.HANDLE_MEMBERS:
            value.pop(name, None)
        if "tags" in value and isinstance(value["tags"], list):
            value["tags"] = [[t for t in sub if not _is_handle_code(t[0])]
                             for sub in value["tags"]]
        for v in value.values():
            _drop_handle_members(v)
    elif isinstance(value, list):
        for v in value:
            _drop_handle_members(v)
