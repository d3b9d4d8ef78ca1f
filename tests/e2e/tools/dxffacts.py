"""What an entity holds beyond its plain DXF attributes, as comparable values.

Everything becomes None, bool, int, float, str, bytes, lists and dicts, so the
comparison needs no knowledge of ezdxf's classes. ezdxf already turns both
the original and the saved file into the same model whatever their DXF
version, which makes these facts version-neutral.
"""
import array
import enum
import re

from ezdxf.entities import DXFEntity

# Attributes of helper objects that point into the drawing by handle.
HANDLE_MEMBERS = {"source_boundary_objects"}
# Helper-object members that are back-references or caches, not content.
SKIPPED_MEMBERS = {"doc", "_doc", "entity", "_entity", "owner", "dxf"}

# Per entity type: the members holding content outside the DXF namespace.
MEMBERS = {
    "LWPOLYLINE": ("points",),
    "SPLINE": ("control_points", "fit_points", "knots", "weights"),
    "HATCH": ("paths", "pattern", "gradient", "seeds"),
    "MPOLYGON": ("paths", "pattern", "gradient"),
    "LEADER": ("vertices",),
    "MLINE": ("vertices",),
    "MESH": ("vertices", "faces", "edges", "creases"),
    "MTEXT": ("text",),
    "IMAGE": ("boundary_path",),
    "WIPEOUT": ("boundary_path",),
    "PDFUNDERLAY": ("boundary_path",),
    "DWFUNDERLAY": ("boundary_path",),
    "DGNUNDERLAY": ("boundary_path",),
    "MULTILEADER": ("context", "arrow_heads", "block_attribs"),
}
ACIS_TYPES = {"3DSOLID", "REGION", "BODY", "SURFACE", "EXTRUDEDSURFACE",
              "LOFTEDSURFACE", "REVOLVEDSURFACE", "SWEPTSURFACE", "PLANESURFACE"}


def text(value: str) -> str:
    """Texts compare after ezdxf's decoding of \\U+XXXX escapes, so that a
    character written escaped in one code page and plainly in another is the
    same character. (ezdxf's own decoder fails on lower-case hex digits.)"""
    return _ESCAPE.sub(lambda m: chr(int(m.group(1), 16)), value) if "\\U+" in value \
        else value


_ESCAPE = re.compile(r"\\U\+([0-9A-Fa-f]{4})")


def plain(value, depth=0):
    if depth > 12:
        return "<too deep>"
    if isinstance(value, DXFEntity):  # a reference, not content of its own
        return f"#{value.dxf.handle}"
    if value is None or isinstance(value, (bool, int, float)):
        return value.value if isinstance(value, enum.Enum) else value
    if isinstance(value, str):
        return text(value)
    if isinstance(value, (bytes, bytearray, memoryview)):
        return bytes(value)
    if isinstance(value, array.array):
        return list(value)
    if isinstance(value, dict):
        return {str(k): plain(v, depth + 1) for k, v in value.items()}
    if hasattr(value, "isclose") and hasattr(value, "x"):  # Vec2, Vec3
        return [float(c) for c in value]
    if isinstance(value, (list, tuple)) or _is_sequence(value):
        return [plain(v, depth + 1) for v in value]
    members = _members(value)
    if members is not None:
        out = {"class": type(value).__name__}
        for name, member in members:
            if name in SKIPPED_MEMBERS or callable(member):
                continue
            out[name] = plain(member, depth + 1)
        return out
    return repr(value)


def _is_sequence(value) -> bool:
    return hasattr(value, "__len__") and hasattr(value, "__getitem__") \
        and not hasattr(value, "keys")


def _members(value):
    names = []
    if hasattr(value, "__dict__"):
        names += [n for n in vars(value) if not n.startswith("__")]
    for cls in type(value).__mro__:
        names += [n for n in getattr(cls, "__slots__", ()) if n not in names]
    if not names:
        return None
    return [(n.lstrip("_"), getattr(value, n, None)) for n in names]


def members(entity) -> dict:
    """Content held outside the DXF namespace, by member name."""
    kind = entity.dxftype()
    out = {}
    for name in MEMBERS.get(kind, ()):
        if name == "points":
            out[name] = [list(p) for p in entity.get_points("xyseb")]
        else:
            out[name] = plain(getattr(entity, name, None))
    if kind in ACIS_TYPES and hasattr(entity, "acis_data"):
        data = entity.acis_data
        # ezdxf drops the blanks that end SAT lines; they carry nothing
        out["acis_data"] = bytes(data) if isinstance(data, (bytes, bytearray)) \
            else [line.rstrip() for line in data]
    if hasattr(entity, "xtags"):  # types ezdxf keeps as raw tags
        out["tags"] = raw_tags(entity.xtags)
    graphic = getattr(entity, "proxy_graphic", None)
    if graphic:
        out["proxy_graphic"] = bytes(graphic)
    return out


# Group codes holding the entity's own handle and its owner.
_IDENTITY_CODES = {5, 105, 330}


def raw_tags(xtags) -> list:
    return [[(t.code, plain(t.value)) for t in sub if t.code not in _IDENTITY_CODES]
            for sub in xtags.subclasses]


def xdata(entity) -> dict:
    """Extended data as tag lists per application."""
    if not getattr(entity, "xdata", None):
        return {}
    return {appid: [(t.code, plain(t.value)) for t in tags]
            for appid, tags in entity.xdata.data.items()}


def xdict_keys(entity) -> list:
    if not entity.has_extension_dict:
        return []
    try:
        return sorted(entity.get_extension_dict().keys())
    except Exception:  # a broken link in the original: nothing to compare
        return []


def sub_entities(entity) -> list:
    """Vertices of a POLYLINE, attributes of an INSERT: they travel with
    their parent and are matched by order."""
    kind = entity.dxftype()
    if kind == "POLYLINE":
        return list(entity.vertices)
    if kind == "INSERT":
        return list(entity.attribs)
    return []
