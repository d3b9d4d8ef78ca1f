"""Groups of entities for the generated test drawings, one function a group.

Each function adds its entities to a layout at an offset and leaves out what
the drawing's DXF version cannot hold. Values are deliberately awkward
(thirds, tiny and large numbers, negative angles) so that a writer that
rounds or drops a field shows up in the comparison.
"""
import math

from ezdxf.acis import api as acis
from ezdxf.enums import TextEntityAlignment
from ezdxf.math import Vec3
from ezdxf.render import forms

THIRD = 1.0 / 3.0
APP = "QVTEST"
GERMAN = "Grüße, Äpfel, Öl, Übermaß"
CHINESE = "中文字体测试"


def is_r12(doc) -> bool:
    return doc.dxfversion <= "AC1009"


def has_true_colour(doc) -> bool:
    return doc.dxfversion >= "AC1018"


def xdata(entity, *values):
    entity.set_xdata(APP, [(1000, "qv"), *values])


def setup_tables(doc):
    """Layers with colours and linetypes, a text style, an application id."""
    doc.appids.new(APP)
    doc.layers.add("WALLS", color=1, linetype="DASHED")
    doc.layers.add("DOORS", color=3, linetype="CENTER")
    doc.layers.add("TEXTS", color=5)
    hidden = doc.layers.add("HIDDEN_LAYER", color=8, linetype="HIDDEN")
    hidden.off()
    doc.layers.add("LOCKED").lock()
    doc.styles.add("QVSTYLE", font="LiberationSans-Regular.ttf").dxf.width = 0.8
    doc.styles.add("QVSHX", font="romans.shx")


def curves(doc, msp, at):
    x, y = at
    line = msp.add_line((x, y), (x + 10 + THIRD, y + 5, 1e-7), dxfattribs={"layer": "WALLS"})
    xdata(line, (1040, math.pi), (1070, -7), (1010, (1, 2, 3)))
    msp.add_point((x + 1, y + 8, -2.5), dxfattribs={"color": 6})
    msp.add_circle((x + 15, y + 5), radius=2 * THIRD, dxfattribs={"linetype": "DASHDOT"})
    arc = msp.add_arc((x + 20, y + 5), radius=3, start_angle=-30, end_angle=212.5)
    arc.dxf.thickness = 0.25
    if is_r12(doc):
        return
    msp.add_ellipse((x + 28, y + 5), major_axis=(4, 1), ratio=0.375,
                    start_param=0.5, end_param=5.0, dxfattribs={"color": 2})
    fit = msp.add_spline([(x, y + 12), (x + 3, y + 15), (x + 7, y + 11), (x + 10, y + 14)])
    xdata(fit, (1000, "fit spline"))
    msp.add_open_spline([(x + 12, y + 12), (x + 14, y + 16), (x + 17, y + 10), (x + 20, y + 14)],
                        degree=3)
    frame = [(x + 22, y + 12), (x + 24, y + 16), (x + 27, y + 10), (x + 30, y + 14)]
    msp.add_rational_spline(frame, weights=[1, 0.5, 2.25, 1], degree=3)
    if has_true_colour(doc):
        attribs = {"true_color": 0x3366CC, "transparency": 0x0200007F}
        msp.add_line((x, y - 2), (x + 30, y - 2), dxfattribs=attribs)


def polylines(doc, msp, at):
    x, y = at
    msp.add_polyline2d([(x, y, 0), (x + 4, y, 0.5), (x + 4, y + 4, -1), (x, y + 4, 0)],
                       format="xyb", close=True, dxfattribs={"layer": "DOORS"})
    wide = msp.add_polyline2d([(x + 6, y), (x + 10, y + 3), (x + 14, y)])
    for vertex in wide.vertices:
        vertex.dxf.start_width, vertex.dxf.end_width = 0.25, 0.75
    p3d = msp.add_polyline3d([(x + 16, y, 0), (x + 18, y + 3, 2.5), (x + 20, y, -1.25)])
    xdata(p3d, (1000, "3d"))
    face = msp.add_polyface()
    face.append_face([(x + 22, y, 0), (x + 25, y, 0), (x + 25, y + 3, 1), (x + 22, y + 3, 1)])
    face.append_face([(x + 25, y, 0), (x + 27, y + 1.5, 2), (x + 25, y + 3, 1)])
    mesh = msp.add_polymesh(size=(3, 4))
    for m in range(3):
        for n in range(4):
            mesh.set_mesh_vertex((m, n), (x + 30 + n, y + m, math.sin(m + n)))
    if not is_r12(doc):
        msp.add_lwpolyline([(x, y + 8, 0, 0, 0.4142), (x + 5, y + 8, 0.5, 0.25, 0),
                            (x + 5, y + 12, 0, 0, -0.75), (x, y + 12, 0.1, 0.1, 0)],
                           format="xyseb", close=True, dxfattribs={"const_width": 0})
        plain = msp.add_lwpolyline([(x + 7, y + 8), (x + 12, y + 9), (x + 9, y + 12)])
        plain.dxf.elevation = 1.5
        xdata(plain, (1071, 123456789))


def texts(doc, msp, at):
    x, y = at
    alignments = [TextEntityAlignment.LEFT, TextEntityAlignment.CENTER,
                  TextEntityAlignment.RIGHT, TextEntityAlignment.MIDDLE_CENTER,
                  TextEntityAlignment.TOP_RIGHT, TextEntityAlignment.BOTTOM_LEFT]
    for i, align in enumerate(alignments):
        text = msp.add_text(f"align {align.name}", dxfattribs={"height": 0.5, "layer": "TEXTS"})
        text.set_placement((x + 10 * (i % 3), y + 2 * (i // 3)), align=align)
    aligned = msp.add_text("ALIGNED", dxfattribs={"height": 0.7})
    aligned.set_placement((x, y + 5), (x + 8, y + 6), align=TextEntityAlignment.ALIGNED)
    fitted = msp.add_text("FIT", dxfattribs={"height": 0.7})
    fitted.set_placement((x + 10, y + 5), (x + 18, y + 5), align=TextEntityAlignment.FIT)
    msp.add_text("rotated oblique wide", dxfattribs={
        "insert": (x, y + 8), "height": 0.6, "rotation": 17.5, "oblique": 15,
        "width": 1.25, "style": "QVSTYLE"})
    msp.add_text("mirrored", dxfattribs={"insert": (x + 20, y + 8), "text_generation_flag": 2})
    umlaut = msp.add_text(GERMAN, dxfattribs={"insert": (x, y + 11), "style": "QVSHX"})
    xdata(umlaut, (1000, GERMAN))
    if is_r12(doc):
        return
    content = (r"\A1;\fLiberation Sans|b1|i0|c0|p34;Bold {\C1;red} and {\H1.5x;big}\P"
               r"\LUnderlined\l \Ooverlined\o \S1/2; \S3^4; \T1.5;tracked\P"
               f"{GERMAN} {CHINESE}")
    mtext = msp.add_mtext(content, dxfattribs={"insert": (x, y + 18), "char_height": 0.5,
                                                "width": 20, "rotation": 5,
                                                "attachment_point": 5, "style": "QVSTYLE"})
    xdata(mtext, (1000, CHINESE))
    msp.add_mtext("x" * 300 + " long text crosses the 250-character chunk limit",
                  dxfattribs={"insert": (x, y + 24), "char_height": 0.25, "width": 30})


def blocks(doc, msp, at):
    x, y = at
    if "QVBLOCK" not in doc.blocks:
        block = doc.blocks.new("QVBLOCK", base_point=(0.5, 0.25))
        block.add_circle((0, 0), 1)
        block.add_line((-1, -1), (1, 1), dxfattribs={"color": 0})  # BYBLOCK
        block.add_attdef("NAME", (0, 1.25), "default name",
                         dxfattribs={"height": 0.3, "prompt": "Name?"})
        block.add_attdef("NUMBER", (0, -1.5), "0",
                         dxfattribs={"height": 0.25, "flags": 8, "rotation": 10})
        block.add_attdef("HIDDEN", (0, -2), "secret", dxfattribs={"flags": 1})
    # the definition's ATTDEFs also appear on their own, outside any block
    msp.add_attdef("LOOSE", (x, y - 3), "loose attdef", dxfattribs={"height": 0.4})
    ref = msp.add_blockref("QVBLOCK", (x + 2, y + 2), dxfattribs={
        "xscale": 1.5, "yscale": 1.5, "rotation": 30, "layer": "DOORS"})
    ref.add_auto_attribs({"NAME": GERMAN, "NUMBER": "42", "HIDDEN": "shh"})
    xdata(ref, (1002, "{"), (1000, "nested"), (1040, 2.5), (1002, "}"))
    grid = msp.add_blockref("QVBLOCK", (x + 10, y + 2), dxfattribs={
        "row_count": 3, "column_count": 4, "row_spacing": 3.5, "column_spacing": 2.75})
    grid.add_auto_attribs({"NAME": "grid", "NUMBER": "12"})
    msp.add_blockref("QVBLOCK", (x + 25, y + 2), dxfattribs={"xscale": -1, "zscale": 2})


def fills(doc, msp, at):
    x, y = at
    msp.add_solid([(x, y), (x + 3, y), (x, y + 3), (x + 3, y + 3)], dxfattribs={"color": 4})
    msp.add_trace([(x + 5, y), (x + 8, y), (x + 5, y + 1), (x + 8, y + 1)])
    msp.add_3dface([(x + 10, y, 0), (x + 13, y, 1), (x + 13, y + 3, 2), (x + 10, y + 3, 3)],
                   dxfattribs={"invisible": 5})
    if is_r12(doc):
        return
    msp.add_wipeout([(x + 15, y), (x + 19, y), (x + 19, y + 3), (x + 15, y + 3)])
    solid = msp.add_hatch(color=1)
    solid.paths.add_polyline_path([(x, y + 5, 0), (x + 4, y + 5, 0.5), (x + 4, y + 8, 0),
                                   (x, y + 8, 0)], is_closed=True)
    edges = msp.add_hatch(color=5)
    edges.set_pattern_fill("ANSI31", scale=0.5, angle=15)
    path = edges.paths.add_edge_path()
    path.add_line((x + 6, y + 5), (x + 10, y + 5))
    path.add_arc((x + 10, y + 6.5), radius=1.5, start_angle=-90, end_angle=90)
    path.add_line((x + 10, y + 8), (x + 8, y + 8))
    path.add_ellipse((x + 7, y + 8), major_axis=(1, 0), ratio=0.5,
                     start_angle=0, end_angle=180)
    path.add_line((x + 6, y + 8), (x + 6, y + 5))
    edges.paths.add_polyline_path([(x + 7, y + 6), (x + 8, y + 6), (x + 8, y + 7)],
                                  is_closed=True, flags=16)
    spline = msp.add_hatch(color=3)
    spath = spline.paths.add_edge_path()
    spath.add_spline(fit_points=[(x + 12, y + 5), (x + 14, y + 8), (x + 16, y + 5)])
    spath.add_line((x + 16, y + 5), (x + 12, y + 5))
    xdata(spline, (1000, "hatch"))
    if doc.dxfversion >= "AC1018":
        gradient = msp.add_hatch()
        gradient.set_gradient((255, 0, 0), (0, 0, 255), rotation=30)
        gradient.paths.add_polyline_path([(x + 18, y + 5), (x + 21, y + 5), (x + 21, y + 8)],
                                         is_closed=True)


def dimensions(doc, msp, at):
    x, y = at
    msp.add_linear_dim(base=(x, y + 3), p1=(x, y), p2=(x + 5, y)).render()
    msp.add_linear_dim(base=(x + 8, y + 4), p1=(x + 7, y), p2=(x + 11, y + 2),
                       angle=30).render()
    aligned = msp.add_aligned_dim(p1=(x + 14, y), p2=(x + 18, y + 3), distance=1)
    aligned.render()
    # ezdxf stores an aligned dimension as a rotated one; readers know kind 1 apart
    dimension = aligned.dimension
    dimension.dxf.dimtype = (dimension.dxf.dimtype & ~0x0F) | 1
    dimension.dxf.discard("angle")
    xdata(dimension, (1000, "aligned"))
    msp.add_angular_dim_2l(base=(x + 23, y + 3), line1=((x + 20, y), (x + 26, y)),
                           line2=((x + 20, y), (x + 24, y + 4))).render()
    msp.add_diameter_dim(center=(x + 3, y + 10), radius=2, angle=45).render()
    msp.add_radius_dim(center=(x + 10, y + 10), radius=2.5, angle=-60).render()
    msp.add_angular_dim_3p(base=(x + 16, y + 12), center=(x + 15, y + 8),
                           p1=(x + 18, y + 8), p2=(x + 15, y + 11)).render()
    msp.add_ordinate_x_dim(feature_location=(x + 22, y + 9), offset=(0, 3),
                           origin=(x + 20, y + 8)).render()
    msp.add_ordinate_y_dim(feature_location=(x + 26, y + 9), offset=(2, 0),
                           origin=(x + 20, y + 8)).render()
    if not is_r12(doc):
        msp.add_leader([(x, y + 16), (x + 3, y + 19), (x + 6, y + 19)])


def images(doc, msp, at):
    x, y = at
    if is_r12(doc):
        return
    image_def = doc.add_image_def(filename="qv_test_image.png", size_in_pixel=(64, 32))
    image = msp.add_image(image_def, insert=(x, y), size_in_units=(6.4, 3.2), rotation=12)
    image.set_boundary_path([(0, 0), (40, 5), (64, 32), (5, 30)])
    xdata(image, (1000, "image"))


def solids(doc, msp, at):
    """ACIS data: text lines up to R2010, binary from R2013 on."""
    if is_r12(doc):
        return
    x, y = at
    for i, add in enumerate((msp.add_region, msp.add_3dsolid, msp.add_body)):
        cube = forms.cube().scale_uniform(2).translate(x + 4 * i, y, 0)
        acis.export_dxf(add(), [acis.body_from_mesh(cube)])


def objects(doc, msp, at):
    """Extension dictionaries and a GROUP, which live in the OBJECTS section."""
    x, y = at
    first = msp.add_line((x, y), (x + 5, y), dxfattribs={"layer": "HIDDEN_LAYER"})
    second = msp.add_circle((x + 8, y), 1.5, dxfattribs={"layer": "LOCKED"})
    xdata(second, (1000, "grouped"), (1041, 1e-7), (1042, 123456.789))
    if is_r12(doc):
        return
    record = first.new_extension_dict().add_xrecord("QV_RECORD")
    record.reset([(1, "xrecord text"), (40, THIRD), (90, 65535), (10, Vec3(1, 2, 3))])
    second.new_extension_dict().add_dictionary_var("QV_VAR", "dictionary variable")
    doc.groups.new("QVGROUP", description="two members").extend([first, second])


GROUPS = {
    "curves": curves, "polylines": polylines, "texts": texts, "blocks": blocks,
    "fills": fills, "dimensions": dimensions, "images": images, "solids": solids,
    "objects": objects,
}
