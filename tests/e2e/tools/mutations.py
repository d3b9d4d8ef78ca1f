"""Faults a DXF writer could make, applied to an ezdxf document.

Each mutation changes exactly one thing the comparison promises to notice.
They run on the generated drawings, whose content entity_groups defines.
"""
import math

from ezdxf.math import Vec3


def _first(doc, kind, where=lambda e: True):
    return next(e for e in doc.modelspace() if e.dxftype() == kind and where(e))


def _has_xdata(e):
    return e.has_xdata("QVTEST")


def nudge_line_end(doc):
    line = _first(doc, "LINE")
    line.dxf.end = Vec3(line.dxf.end) * (1 + 1e-7)


def shrink_circle(doc):
    circle = _first(doc, "CIRCLE")
    circle.dxf.radius *= 1 - 1e-7


def recolour_line(doc):
    line = _first(doc, "LINE")
    line.dxf.color = 2


def move_to_other_layer(doc):
    _first(doc, "LINE").dxf.layer = "DOORS"


def change_text(doc):
    text = _first(doc, "TEXT", lambda e: "Grüße" in e.dxf.text)
    text.dxf.text = text.dxf.text.replace("ü", "ue")


def drop_mtext_format_code(doc):
    mtext = _first(doc, "MTEXT", lambda e: r"\C1;" in e.text)
    mtext.text = mtext.text.replace(r"\C1;", "")


def delete_entity(doc):
    doc.modelspace().delete_entity(_first(doc, "ARC"))


def change_xdata_value(doc):
    line = _first(doc, "LINE", _has_xdata)
    tags = [(c, 3.14159 if c == 1040 else v) for c, v in line.get_xdata("QVTEST")]
    line.set_xdata("QVTEST", tags)


def drop_xdata(doc):
    _first(doc, "INSERT", _has_xdata).discard_xdata("QVTEST")


def change_bulge(doc):
    poly = _first(doc, "LWPOLYLINE", lambda e: e.closed)
    points = poly.get_points("xyseb")
    x, y, s, e, b = points[0]
    points[0] = (x, y, s, e, b * 0.999)
    poly.set_points(points, format="xyseb")


def change_hatch_arc(doc):
    hatch = _first(doc, "HATCH", lambda e: e.dxf.pattern_name == "ANSI31")
    arc = next(e for p in hatch.paths if hasattr(p, "edges") for e in p.edges
               if type(e).__name__ == "ArcEdge")
    arc.radius += 1e-6


def change_spline_weight(doc):
    spline = _first(doc, "SPLINE", lambda e: len(e.weights))
    weights = list(spline.weights)
    weights[1] += 0.01
    spline.weights = weights


def change_attrib(doc):
    insert = _first(doc, "INSERT", lambda e: len(e.attribs) and e.dxf.get("row_count", 1) == 1)
    insert.attribs[1].dxf.text = "43"


def drop_attrib(doc):
    insert = _first(doc, "INSERT", lambda e: len(e.attribs) == 3)
    insert.delete_attrib("HIDDEN")


def move_polyline_vertex(doc):
    poly = _first(doc, "POLYLINE", lambda e: e.is_3d_polyline)
    poly.vertices[1].dxf.location = Vec3(poly.vertices[1].dxf.location) + (0, 0, 1e-5)


def recolour_layer(doc):
    doc.layers.get("WALLS").color = 4


def change_linetype_pattern(doc):
    pattern = doc.linetypes.get("DASHED").pattern_tags.tags
    index = next(i for i, t in enumerate(pattern) if t.code == 49)
    pattern[index] = type(pattern[index])(49, pattern[index].value * 2)


def change_style_font(doc):
    doc.styles.get("QVSTYLE").dxf.font = "DejaVuSans.ttf"


def swap_order(doc):
    msp = doc.modelspace()
    first = next(iter(msp))
    msp.unlink_entity(first)
    msp.add_entity(first)


def change_true_colour(doc):
    line = _first(doc, "LINE", lambda e: e.dxf.hasattr("true_color"))
    line.dxf.true_color = 0x3366CD


def new_handle(doc):
    """The same line, but under another handle: the writer renumbered."""
    msp = doc.modelspace()
    line = _first(doc, "LINE")
    msp.add_entity(line.copy())
    msp.delete_entity(line)


def drop_extension_dict(doc):
    _first(doc, "LINE", lambda e: e.has_extension_dict).discard_extension_dict()


def drop_group_member(doc):
    group = doc.groups.get("QVGROUP")
    group.set_data(list(group)[:1])


def change_image_boundary(doc):
    image = _first(doc, "IMAGE")
    path = list(image.boundary_path)
    path[1] = (path[1][0] + 1, path[1][1])
    image.set_boundary_path(path)


def change_minsert_rows(doc):
    _first(doc, "INSERT", lambda e: e.dxf.get("row_count", 1) > 1).dxf.row_count = 2


def move_dimension_defpoint(doc):
    dim = _first(doc, "DIMENSION")
    dim.dxf.defpoint = Vec3(dim.dxf.defpoint) + (0.001, 0, 0)


def change_acis_line(doc):
    solid = _first(doc, "3DSOLID")
    lines = list(solid.acis_data)
    lines[-2] = lines[-2].replace("0", "1", 1)
    solid.sat = lines


def drop_block_entity(doc):
    block = doc.blocks.get("QVBLOCK")
    block.delete_entity(next(e for e in block if e.dxftype() == "CIRCLE"))


def rotate_text(doc):
    text = _first(doc, "TEXT", lambda e: e.dxf.get("rotation", 0) != 0)
    text.dxf.rotation = math.degrees(math.radians(text.dxf.rotation) + 1e-6)


# name: (generated drawing, mutation)
MUTATIONS = {
    "line end moved by 1e-7 relative": ("curves_R2018.dxf", nudge_line_end),
    "circle radius shrunk by 1e-7 relative": ("curves_R2018.dxf", shrink_circle),
    "line colour changed": ("curves_R2000.dxf", recolour_line),
    "line moved to another layer": ("curves_R12.dxf", move_to_other_layer),
    "umlaut in TEXT rewritten": ("texts_R2000.dxf", change_text),
    "MTEXT format code dropped": ("texts_R2007.dxf", drop_mtext_format_code),
    "ARC deleted": ("curves_R12.dxf", delete_entity),
    "xdata real changed": ("curves_R2018.dxf", change_xdata_value),
    "xdata of INSERT dropped": ("blocks_R2000.dxf", drop_xdata),
    "LWPOLYLINE bulge changed": ("polylines_R2018.dxf", change_bulge),
    "HATCH arc edge radius changed": ("fills_R2000.dxf", change_hatch_arc),
    "SPLINE weight changed": ("curves_R2007.dxf", change_spline_weight),
    "ATTRIB text changed": ("blocks_R12.dxf", change_attrib),
    "ATTRIB dropped": ("blocks_R2018.dxf", drop_attrib),
    "3D POLYLINE vertex moved": ("polylines_R12.dxf", move_polyline_vertex),
    "layer colour changed": ("objects_R2000.dxf", recolour_layer),
    "linetype dash doubled": ("curves_R2000.dxf", change_linetype_pattern),
    "text style font changed": ("texts_R2018.dxf", change_style_font),
    "entity order changed": ("curves_R2000.dxf", swap_order),
    "true colour changed": ("curves_R2018.dxf", change_true_colour),
    "entity renumbered": ("curves_R2000.dxf", new_handle),
    "extension dictionary dropped": ("objects_R2018.dxf", drop_extension_dict),
    "GROUP member dropped": ("objects_R2000.dxf", drop_group_member),
    "IMAGE clip boundary changed": ("images_R2007.dxf", change_image_boundary),
    "MINSERT row count changed": ("blocks_R2007.dxf", change_minsert_rows),
    "DIMENSION definition point moved": ("dimensions_R2000.dxf", move_dimension_defpoint),
    "ACIS data changed": ("solids_R2007.dxf", change_acis_line),
    "block definition lost an entity": ("blocks_R12.dxf", drop_block_entity),
    "TEXT rotation changed by 1e-6 rad": ("texts_R12.dxf", rotate_text),
}
