// The comparison rules of the class buckets, on objects read from DXF text.

#include "overkill_bucket_drawing.h"
#include "tooldeck/commands/cleanup/overkill_object_compare.h"

#include <gtest/gtest.h>
#include <numbers>

namespace qvtd::overkill::bucket_testing {
namespace {

TEST(OverkillBucketCompare, TextsByPlacementStringAndFlags) {
    const BucketDrawing d(text(0x100, 1, 2) + text(0x101, 1, 2) +       // an equal copy
                          text(0x102, 1 + 2e-6, 2) +                    // moved by more than e
                          text(0x103, 1 + 4e-7, 2 - 4e-7) +             // moved within e
                          text(0x104, 1, 2, "B") +                      // other string
                          text(0x105, 1, 2, "A", {{71, "2"}}) +         // mirrored in x
                          text(0x106, 1, 2, "A", {{7, "standard"}}) +   // style name in other case
                          text(0x107, 1, 2, "A", {{7, "Other"}}) +      // other style
                          text(0x108, 1, 2, "A", {{50, "360"}}) +       // a whole turn
                          text(0x109, 1, 2, "A", {{50, "90"}}) +        // turned
                          text(0x10A, 1, 2, "A", {{41, "0.8"}}) +       // narrower
                          text(0x10B, 1, 2, "A", at(210, 0, 0, -1)) +   // seen from below
                          text(0x10C, 1, 2, "A", {{40, "2.5000001"}}) + // height within e
                          text(0x10D, 1, 2, "A", {{40, "2.6"}}));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_TRUE(d.same(0x100, 0x103));
    EXPECT_FALSE(d.same(0x100, 0x104));
    EXPECT_FALSE(d.same(0x100, 0x105));
    EXPECT_TRUE(d.same(0x100, 0x106));
    EXPECT_FALSE(d.same(0x100, 0x107));
    EXPECT_TRUE(d.same(0x100, 0x108));
    EXPECT_FALSE(d.same(0x100, 0x109));
    EXPECT_FALSE(d.same(0x100, 0x10A));
    EXPECT_FALSE(d.same(0x100, 0x10B));
    EXPECT_TRUE(d.same(0x100, 0x10C));
    EXPECT_FALSE(d.same(0x100, 0x10D));
    // Tolerance 0 still allows for rounding (1e-10) but not for a visible move.
    const double rounding = comparisonTolerance(OverkillSettings{.tolerance = 0.0});
    EXPECT_TRUE(d.same(0x100, 0x101, rounding));
    EXPECT_FALSE(d.same(0x100, 0x103, rounding));
}

TEST(OverkillBucketCompare, JustifiedTextIsPlacedByItsAlignmentPoint) {
    // Centred text: the stored position is recomputed from the alignment point, so it may differ.
    const TagList centred = TagList{{72, "1"}} + at(11, 5, 5);
    const BucketDrawing d(text(0x100, 1, 2, "A", centred) + text(0x101, 3, 4, "A", centred) +
                          text(0x102, 1, 2, "A", TagList{{72, "1"}} + at(11, 5, 6)) +
                          text(0x103, 1, 2, "A", TagList{{72, "2"}} + at(11, 5, 5)));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_FALSE(d.same(0x100, 0x103)); // right aligned
}

std::string mtext(unsigned handle, double x, std::string_view contents, const TagList& extra = {}) {
    return entityText("MTEXT", handle,
                      TagList{{100, "AcDbMText"}} + at(10, x, 0) +
                          TagList{{40, "2"}, {41, "30"}, {71, "1"}, {1, std::string(contents)}} + extra);
}

TEST(OverkillBucketCompare, MultilineTexts) {
    const BucketDrawing d(mtext(0x100, 0, "Hello\\Pworld") + mtext(0x101, 5e-7, "Hello\\Pworld") +
                          mtext(0x102, 0, "Hello\\PWorld") + mtext(0x103, 0, "Hello\\Pworld", {{44, "1.5"}}) +
                          mtext(0x104, 0, "Hello\\Pworld", at(11, 0, 1)) +
                          mtext(0x105, 0, "Hello\\Pworld", at(11, 2, 0)));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_FALSE(d.same(0x100, 0x103)); // line spacing
    EXPECT_FALSE(d.same(0x100, 0x104)); // direction turned
    EXPECT_TRUE(d.same(0x100, 0x105));  // the same direction, longer vector
}

TEST(OverkillBucketCompare, PointsAndEllipses) {
    const TagList ellipse = at(10, 1, 1) + at(11, 3, 0) + TagList{{40, "0.5"}, {41, "0"}, {42, "3.14159"}};
    const BucketDrawing d(point(0x100, 1, 2, 3) + point(0x101, 1, 2, 3 + 5e-7) + point(0x102, 1, 2, 3.1) +
                          point(0x103, 1, 2, 3, at(210, 0, 0, -1)) + point(0x104, 1, 2, 3, {{39, "2"}}) +
                          entityText("ELLIPSE", 0x110, TagList{{100, "AcDbEllipse"}} + ellipse) +
                          entityText("ELLIPSE", 0x111, TagList{{100, "AcDbEllipse"}} + ellipse) +
                          entityText("ELLIPSE", 0x112,
                                     TagList{{100, "AcDbEllipse"}} + at(10, 1, 1) + at(11, 3, 0) +
                                         TagList{{40, "0.5"},
                                                 {41, num(2 * std::numbers::pi)},
                                                 {42, num(2 * std::numbers::pi + 3.14159)}}) +
                          entityText("ELLIPSE", 0x113,
                                     TagList{{100, "AcDbEllipse"}} + at(10, 1, 1) + at(11, 3, 0) +
                                         TagList{{40, "0.5"}, {41, "0"}, {42, "3.2"}}) +
                          entityText("ELLIPSE", 0x114,
                                     TagList{{100, "AcDbEllipse"}} + at(10, 1, 1) + at(11, 0, 3) +
                                         TagList{{40, "0.5"}, {41, "0"}, {42, "3.14159"}}));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_TRUE(d.same(0x100, 0x103)); // a normal only directs a thickness
    EXPECT_FALSE(d.same(0x100, 0x104));
    EXPECT_TRUE(d.same(0x110, 0x111));
    EXPECT_TRUE(d.same(0x110, 0x112)); // the same span a whole turn later
    EXPECT_FALSE(d.same(0x110, 0x113));
    EXPECT_FALSE(d.same(0x110, 0x114));
    EXPECT_FALSE(d.same(0x100, 0x110)); // classes never meet
}

std::string spline(unsigned handle, double lastY, const TagList& extra = {}) {
    return entityText("SPLINE", handle,
                      TagList{{100, "AcDbSpline"},
                              {70, "8"},
                              {71, "2"},
                              {72, "6"},
                              {73, "3"},
                              {74, "0"},
                              {40, "0"},
                              {40, "0"},
                              {40, "0"},
                              {40, "1"},
                              {40, "1"},
                              {40, "1"}} +
                          extra + at(10, 0, 0) + at(10, 1, 1) + at(10, 2, lastY));
}

TEST(OverkillBucketCompare, SplinesByKnotsPointsAndWeights) {
    const TagList unitWeights{{41, "1"}, {41, "1"}, {41, "1"}};
    const BucketDrawing d(spline(0x100, 0) + spline(0x101, 0) + spline(0x102, 0.001) +
                          spline(0x103, 0, unitWeights) +
                          spline(0x104, 0, {{41, "1"}, {41, "2"}, {41, "1"}}));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_TRUE(d.same(0x100, 0x103)); // no weights means weights of 1
    EXPECT_FALSE(d.same(0x100, 0x104));
}

std::string hatch(unsigned handle, double offset, std::string_view pattern = "ANSI31", double scale = 1.0) {
    TagList body =
        TagList{{100, "AcDbHatch"}} + at(10, 0, 0) + at(210, 0, 0, 1) + TagList{{2, std::string(pattern)},
                                                                                {70, "0"},
                                                                                {71, "0"},
                                                                                {91, "1"},
                                                                                {92, "2"},
                                                                                {72, "0"},
                                                                                {73, "1"},
                                                                                {93, "4"}};
    for (auto [x, y] : {std::pair{0.0, 0.0}, {10.0, 0.0}, {10.0, 10.0}, {0.0, 10.0}})
        body = body + TagList{{10, num(x + offset)}, {20, num(y)}};
    body = body + TagList{{97, "0"},        {75, "0"}, {76, "1"}, {52, "0"},
                          {41, num(scale)}, {77, "0"}, {78, "0"}, {98, "0"}};
    return entityText("HATCH", handle, body);
}

TEST(OverkillBucketCompare, HatchesByPatternAndBoundary) {
    const BucketDrawing d(hatch(0x100, 0) + hatch(0x101, 0) + hatch(0x102, 5e-7) + hatch(0x103, 0.01) +
                          hatch(0x104, 0, "ANSI32") + hatch(0x105, 0, "ANSI31", 2.0));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_TRUE(d.same(0x100, 0x102));
    EXPECT_FALSE(d.same(0x100, 0x103));
    EXPECT_FALSE(d.same(0x100, 0x104));
    EXPECT_FALSE(d.same(0x100, 0x105));
}

std::string insert(unsigned handle, std::string_view block, double x, const TagList& extra = {},
                   std::string_view subclass = "AcDbBlockReference") {
    return entityText("INSERT", handle,
                      TagList{{100, std::string(subclass)}, {2, std::string(block)}} + at(10, x, 0) + extra);
}

TEST(OverkillBucketCompare, BlockReferencesAndGrids) {
    const TagList grid{{70, "3"}, {71, "2"}, {44, "10"}, {45, "5"}};
    const TagList attribute = TagList{{66, "1"}};
    const BucketDrawing d(
        insert(0x100, "Door", 1) + insert(0x101, "Door", 1 + 5e-7) + insert(0x102, "Door", 1, {{41, "2"}}) +
            insert(0x103, "Window", 1) + insert(0x104, "Door", 1, {{50, "-360"}}) +
            insert(0x105, "Door", 1, {{50, "45"}}) + insert(0x110, "Door", 1, grid, "AcDbMInsertBlock") +
            insert(0x111, "Door", 1, grid, "AcDbMInsertBlock") +
            insert(0x112, "Door", 1, {{70, "3"}, {71, "3"}, {44, "10"}, {45, "5"}}, "AcDbMInsertBlock") +
            insert(0x113, "Door", 1, {{70, "3"}, {71, "2"}, {44, "10"}, {45, "6"}}, "AcDbMInsertBlock"),
        blockDefinition(0x50, "Door") + blockDefinition(0x60, "Window"));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102)); // other scale
    EXPECT_FALSE(d.same(0x100, 0x103)); // other block
    EXPECT_TRUE(d.same(0x100, 0x104));
    EXPECT_FALSE(d.same(0x100, 0x105));
    EXPECT_TRUE(d.same(0x110, 0x111));
    EXPECT_FALSE(d.same(0x110, 0x112)); // rows
    EXPECT_FALSE(d.same(0x110, 0x113)); // row spacing
}

std::string attribute(unsigned handle, std::string_view value) {
    return entityText(
        "ATTRIB", handle,
        TagList{{100, "AcDbText"}} + at(10, 1, 0) +
            TagList{{40, "1"}, {1, std::string(value)}, {100, "AcDbAttribute"}, {2, "TAG"}, {70, "0"}});
}

std::string seqend(unsigned handle) {
    return entityText("SEQEND", handle, {});
}

TEST(OverkillBucketCompare, AttributeValuesAreNotCompared) {
    const BucketDrawing d(insert(0x100, "Door", 1, {{66, "1"}}) + attribute(0x101, "D-01") + seqend(0x102) +
                              insert(0x103, "Door", 1, {{66, "1"}}) + attribute(0x104, "D-02") +
                              seqend(0x105),
                          blockDefinition(0x50, "Door"));
    EXPECT_TRUE(d.same(0x100, 0x103));
}

std::string image(unsigned handle, std::string_view definition, double x) {
    return entityText(
        "IMAGE", handle,
        TagList{{100, "AcDbRasterImage"}, {90, "0"}} + at(10, x, 0) + at(11, 0.01, 0) + at(12, 0, 0.01) +
            TagList{{13, "640"}, {23, "480"}, {340, std::string(definition)}, {70, "7"}, {280, "0"}});
}

std::string leader(unsigned handle, double lastY) {
    return entityText(
        "LEADER", handle,
        TagList{{100, "AcDbLeader"}, {3, "Standard"}, {71, "1"}, {72, "0"}, {73, "3"}, {76, "2"}} +
            at(10, 0, 0) + at(10, 5, lastY));
}

TEST(OverkillBucketCompare, ImagesAndLeaders) {
    const BucketDrawing d(image(0x100, "A0", 0) + image(0x101, "A0", 5e-7) + image(0x102, "A1", 0) +
                          image(0x103, "A0", 1) + leader(0x110, 5) + leader(0x111, 5) + leader(0x112, 6));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102)); // another picture
    EXPECT_FALSE(d.same(0x100, 0x103));
    EXPECT_TRUE(d.same(0x110, 0x111));
    EXPECT_FALSE(d.same(0x110, 0x112));
}

std::string solid(unsigned handle, double lastX) {
    return entityText("SOLID", handle,
                      TagList{{100, "AcDbTrace"}} + at(10, 0, 0) + at(11, 1, 0) + at(12, 0, 1) +
                          at(13, lastX, 1));
}

std::string face(unsigned handle, const std::string& hidden) {
    return entityText("3DFACE", handle,
                      TagList{{100, "AcDbFace"}} + at(10, 0, 0) + at(11, 1, 0) + at(12, 1, 1) + at(13, 0, 1) +
                          TagList{{70, hidden}});
}

TEST(OverkillBucketCompare, CornersOfSolidsAndFaces) {
    const BucketDrawing d(solid(0x100, 1) + solid(0x101, 1) + solid(0x102, 1.5) + face(0x110, "0") +
                          face(0x111, "0") + face(0x112, "4"));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_TRUE(d.same(0x110, 0x111));
    EXPECT_FALSE(d.same(0x110, 0x112)); // an edge hidden
}

// A rotated dimension of its own anonymous block, measuring from (0,0) to (x2,0).
std::string rotatedDimension(unsigned handle, std::string_view block, double x2,
                             std::string_view rotation = "0", std::string_view override = "") {
    return entityText(
        "DIMENSION", handle,
        TagList{{100, "AcDbDimension"}, {2, std::string(block)}} + at(10, 0, 5) + at(11, 5, 5) +
            TagList{{70, "32"}, {1, std::string(override)}, {3, "Standard"}, {100, "AcDbAlignedDimension"}} +
            at(13, 0, 0) + at(14, x2, 0) +
            TagList{{50, std::string(rotation)}, {100, "AcDbRotatedDimension"}});
}

std::string radialDimension(unsigned handle, std::string_view block, double chordX) {
    return entityText("DIMENSION", handle,
                      TagList{{100, "AcDbDimension"}, {2, std::string(block)}} + at(10, 0, 0) + at(11, 2, 2) +
                          TagList{{70, "36"}, {3, "Standard"}, {100, "AcDbRadialDimension"}} +
                          at(15, chordX, 0) + TagList{{40, "0"}});
}

TEST(OverkillBucketCompare, DimensionsIgnoreTheirAnonymousBlock) {
    const BucketDrawing d(rotatedDimension(0x100, "*D1", 10) + rotatedDimension(0x101, "*D2", 10) +
                          rotatedDimension(0x102, "*D3", 11) + rotatedDimension(0x103, "*D4", 10, "30") +
                          rotatedDimension(0x104, "*D5", 10, "0", "<> mm") +
                          radialDimension(0x110, "*D6", 3) + radialDimension(0x111, "*D7", 3) +
                          radialDimension(0x112, "*D8", 4));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102)); // other points
    EXPECT_FALSE(d.same(0x100, 0x103)); // other rotation
    EXPECT_FALSE(d.same(0x100, 0x104)); // text override
    EXPECT_TRUE(d.same(0x110, 0x111));
    EXPECT_FALSE(d.same(0x110, 0x112));
}

std::string region(unsigned handle, std::string_view data) {
    return entityText("REGION", handle,
                      TagList{{100, "AcDbModelerGeometry"}, {70, "1"}, {1, std::string(data)}});
}

TEST(OverkillBucketCompare, RegionsByTheirFieldStream) {
    const BucketDrawing d(region(0x100, "body 1 0.5 2") + region(0x101, "body 1 0.5 2") +
                          region(0x102, "body 1 0.6 2"));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
}

std::string xline(unsigned handle, double x, const TagList& extra = {}) {
    return entityText("XLINE", handle, TagList{{100, "AcDbXline"}} + at(10, x, 1) + at(11, 1, 0) + extra);
}

TEST(OverkillBucketCompare, OtherClassesCompareTheirFields) {
    const BucketDrawing d(xline(0x100, 2) + xline(0x101, 2 + 5e-7) + xline(0x102, 2 + 5e-6) +
                          xline(0x103, 2, {{1, "note"}}) + xline(0x104, 2, {{1, "other"}}) +
                          xline(0x105, 2, {{340, "A0"}}) + xline(0x106, 2, {{340, "A1"}}) +
                          xline(0x107, 2, {{70, "1"}}) + xline(0x108, 2, {{70, " 1"}}));
    EXPECT_TRUE(d.same(0x100, 0x101));
    EXPECT_FALSE(d.same(0x100, 0x102));
    EXPECT_FALSE(d.same(0x100, 0x103)); // one more field
    EXPECT_FALSE(d.same(0x103, 0x104));
    EXPECT_FALSE(d.same(0x105, 0x106)); // a different shared definition
    EXPECT_TRUE(d.same(0x107, 0x108));  // whole numbers by value
}

// A polyface mesh with two vertices and one face; all its geometry lives in its vertices.
std::string mesh(unsigned handle, double lastX) {
    auto vertex = [](unsigned h, const TagList& body) {
        return entityText("VERTEX", h, TagList{{100, "AcDbVertex"}, {100, "AcDbPolyFaceMeshVertex"}} + body);
    };
    return entityText("POLYLINE", handle,
                      TagList{{100, "AcDbPolyFaceMesh"}, {66, "1"}} + at(10, 0, 0) +
                          TagList{{70, "64"}, {71, "3"}, {72, "1"}}) +
           vertex(handle + 1, at(10, 0, 0) + TagList{{70, "192"}}) +
           vertex(handle + 2, at(10, lastX, 0) + TagList{{70, "192"}}) +
           vertex(handle + 3, at(10, 0, 1) + TagList{{70, "192"}}) +
           vertex(handle + 4, at(10, 0, 0) + TagList{{70, "128"}, {71, "1"}, {72, "2"}, {73, "3"}}) +
           seqend(handle + 5);
}

TEST(OverkillBucketCompare, OwnedSubEntitiesCountInTheFields) {
    const BucketDrawing d(mesh(0x100, 1) + mesh(0x110, 1) + mesh(0x120, 2));
    ASSERT_TRUE(d.entity(0x100).isComplex());
    EXPECT_TRUE(d.same(0x100, 0x110));
    EXPECT_FALSE(d.same(0x100, 0x120));
}

TEST(OverkillBucketCompare, SignaturesAgreeWherePairsAreTheSame) {
    // The grouping relies on this for every rule: same objects share key and anchor count.
    const BucketDrawing d(text(0x100, 1, 2) + text(0x101, 1 + 5e-7, 2) + rotatedDimension(0x102, "*D1", 10) +
                          rotatedDimension(0x103, "*D2", 10) + xline(0x104, 2) + xline(0x105, 2 + 5e-7) +
                          hatch(0x106, 0) + hatch(0x107, 5e-7) + region(0x108, "x") + region(0x109, "x") +
                          text(0x10A, 1, 2, "B"));
    for (auto [a, b] : {std::pair{0x100u, 0x101u},
                        {0x102u, 0x103u},
                        {0x104u, 0x105u},
                        {0x106u, 0x107u},
                        {0x108u, 0x109u}}) {
        SCOPED_TRACE(a);
        ASSERT_TRUE(d.same(a, b));
        const ObjectSignature sa = objectSignature(d.entity(a));
        const ObjectSignature sb = objectSignature(d.entity(b));
        EXPECT_EQ(sa.key, sb.key);
        EXPECT_EQ(sa.anchorCount, sb.anchorCount);
        for (int k = 0; k < sa.anchorCount; ++k) EXPECT_NEAR(sa.anchor[k], sb.anchor[k], 1e-6);
    }
    EXPECT_NE(objectSignature(d.entity(0x100)).key, objectSignature(d.entity(0x10A)).key);
}

} // namespace
} // namespace qvtd::overkill::bucket_testing
