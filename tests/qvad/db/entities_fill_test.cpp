// Filled and area entities: solids, traces, faces, hatches, images, wipeouts and modeler bodies.

#include "entities_drawing.h"
#include "qvad/db/entities/OdDbHatch.h"
#include "qvad/db/entities/OdDbModelerGeometry.h"
#include "qvad/db/entities/OdDbRasterImage.h"
#include "qvad/db/entities/OdDbSolid.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numbers>

using namespace entities_test;
using std::numbers::pi;

namespace {

const OdGeTol kTight(1e-12);

TEST(QuadrilateralEntities, SolidTraceAndFace) {
    auto db = drawing(dxf({{0, "SOLID"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbTrace"},
                           {10, "0"},
                           {20, "0"},
                           {30, "1"},
                           {11, "2"},
                           {21, "0"},
                           {31, "1"},
                           {12, "0"},
                           {22, "2"},
                           {32, "1"},
                           {210, "0"},
                           {220, "0"},
                           {230, "-1"},
                           // a triangle without its fourth corner
                           {0, "TRACE"},
                           {5, "A1"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbTrace"},
                           {10, "0"},
                           {20, "0"},
                           {30, "0"},
                           {11, "1"},
                           {21, "0"},
                           {31, "0"},
                           {12, "0"},
                           {22, "1"},
                           {32, "0"},
                           {13, "1"},
                           {23, "1"},
                           {33, "0"},
                           {0, "3DFACE"},
                           {5, "A2"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbFace"},
                           {10, "0"},
                           {20, "0"},
                           {30, "0"},
                           {11, "1"},
                           {21, "0"},
                           {31, "0"},
                           {12, "1"},
                           {22, "1"},
                           {32, "1"},
                           {13, "0"},
                           {23, "1"},
                           {33, "1"},
                           {70, "5"}}));
    auto* solid = object<OdDbSolid>(*db, "A0");
    ASSERT_NE(solid, nullptr);
    EXPECT_EQ(solid->getPointAt(3), OdGePoint3d(0, 2, 1)); // the missing corner repeats the third
    EXPECT_TRUE(solid->getPointAtWcs(1).isEqualTo(OdGePoint3d(-2, 0, -1), kTight));
    EXPECT_THROW(solid->getPointAt(4), std::out_of_range);
    Lines before = snapshot(*solid);
    solid->setPointAt(3, OdGePoint3d(2, 2, 1));
    EXPECT_EQ(changes(before, snapshot(*solid)), (Lines{"+13 2.0", "+23 2.0", "+33 1.0"}));
    EXPECT_EQ(snapshot(*solid).back(), "33 1.0");

    auto* trace = object<OdDbTrace>(*db, "A1");
    ASSERT_NE(trace, nullptr);
    EXPECT_EQ(trace->getPointAt(3), OdGePoint3d(1, 1, 0));

    auto* face = object<OdDbFace>(*db, "A2");
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->getVertexAt(2), OdGePoint3d(1, 1, 1));
    EXPECT_FALSE(face->isEdgeVisibleAt(0));
    EXPECT_TRUE(face->isEdgeVisibleAt(1));
    EXPECT_FALSE(face->isEdgeVisibleAt(2));
    before = snapshot(*face);
    face->makeEdgeVisibleAt(0);
    face->makeEdgeInvisibleAt(3);
    EXPECT_EQ(changes(before, snapshot(*face)), (Lines{"-70 5", "+70 12"}));
    for (const char* h : {"A0", "A1", "A2"}) expectRoundTrips(*db, *object<OdDbEntity>(*db, h));
}

TEST(HatchEntity, ParsesPolylineAndEdgeLoops) {
    auto db = drawing(dxf({{0, "HATCH"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbHatch"},
                           {10, "0"},
                           {20, "0"},
                           {30, "2"},
                           {210, "0"},
                           {220, "0"},
                           {230, "1"},
                           {2, "ANSI31"},
                           {70, "0"},
                           {71, "1"},
                           {91, "2"},
                           // loop 1: closed polyline with one bulge, made from one source object
                           {92, "3"},
                           {72, "1"},
                           {73, "1"},
                           {93, "3"},
                           {10, "0"},
                           {20, "0"},
                           {42, "0.5"},
                           {10, "10"},
                           {20, "0"},
                           {42, "0"},
                           {10, "10"},
                           {20, "10"},
                           {42, "0"},
                           {97, "1"},
                           {330, "B0"},
                           // loop 2: a line, an arc, an ellipse and a spline
                           {92, "0"},
                           {93, "4"},
                           {72, "1"},
                           {10, "0"},
                           {20, "0"},
                           {11, "1"},
                           {21, "0"},
                           {72, "2"},
                           {10, "1"},
                           {20, "1"},
                           {40, "1"},
                           {50, "270"},
                           {51, "360"},
                           {73, "1"},
                           {72, "3"},
                           {10, "0"},
                           {20, "0"},
                           {11, "2"},
                           {21, "0"},
                           {40, "0.5"},
                           {50, "0"},
                           {51, "180"},
                           {73, "0"},
                           {72, "4"},
                           {94, "3"},
                           {73, "0"},
                           {74, "0"},
                           {95, "8"},
                           {96, "4"},
                           {40, "0"},
                           {40, "0"},
                           {40, "0"},
                           {40, "0"},
                           {40, "1"},
                           {40, "1"},
                           {40, "1"},
                           {40, "1"},
                           {10, "0"},
                           {20, "0"},
                           {10, "1"},
                           {20, "1"},
                           {10, "2"},
                           {20, "1"},
                           {10, "3"},
                           {20, "0"},
                           {97, "0"},
                           {75, "1"},
                           {76, "1"},
                           {52, "45"},
                           {41, "2"},
                           {77, "0"},
                           {78, "1"},
                           {53, "45"},
                           {43, "0"},
                           {44, "0"},
                           {45, "-2"},
                           {46, "2"},
                           {79, "0"},
                           {98, "0"}}));
    auto* hatch = object<OdDbHatch>(*db, "A0");
    ASSERT_NE(hatch, nullptr);
    EXPECT_EQ(hatch->patternName(), "ANSI31");
    EXPECT_FALSE(hatch->isSolidFill());
    EXPECT_TRUE(hatch->associative());
    EXPECT_DOUBLE_EQ(hatch->elevation(), 2);
    EXPECT_NEAR(hatch->patternAngle(), pi / 4, 1e-15);
    EXPECT_DOUBLE_EQ(hatch->patternScale(), 2);
    EXPECT_EQ(hatch->hatchStyle(), OdDbHatch::kOuter);

    auto loops = hatch->loops();
    ASSERT_EQ(loops.size(), 2u);
    EXPECT_TRUE(loops[0].isPolyline());
    ASSERT_EQ(loops[0].vertices.size(), 3u);
    EXPECT_EQ(loops[0].vertices[2], OdGePoint2d(10, 10));
    EXPECT_EQ(loops[0].bulges, (std::vector<double>{0.5, 0, 0}));
    EXPECT_EQ(loops[0].sourceObjects, (std::vector<qvad::Handle>{0xB0}));

    ASSERT_EQ(loops[1].edges.size(), 4u);
    const auto& edges = loops[1].edges;
    EXPECT_EQ(edges[0].type, HatchEdge::kLine);
    EXPECT_EQ(edges[0].end, OdGePoint2d(1, 0));
    EXPECT_EQ(edges[1].type, HatchEdge::kCircArc);
    EXPECT_NEAR(edges[1].startAngle, 1.5 * pi, 1e-15);
    EXPECT_TRUE(edges[1].counterClockwise);
    EXPECT_EQ(edges[2].type, HatchEdge::kEllipArc);
    EXPECT_DOUBLE_EQ(edges[2].minorRatio, 0.5);
    EXPECT_FALSE(edges[2].counterClockwise);
    EXPECT_EQ(edges[3].type, HatchEdge::kSpline);
    EXPECT_EQ(edges[3].degree, 3);
    EXPECT_EQ(edges[3].knots.size(), 8u);
    ASSERT_EQ(edges[3].controlPoints.size(), 4u);
    EXPECT_EQ(edges[3].controlPoints[2], OdGePoint2d(2, 1));
    expectRoundTrips(*db, *hatch);
}

TEST(HatchEntity, DamagedLoopsEndTheParseQuietly) {
    auto db = drawing(dxf({{0, "HATCH"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbHatch"},
                           {2, "SOLID"},
                           {70, "1"},
                           {91, "2"},
                           {92, "2"},
                           {72, "0"},
                           {73, "1"},
                           {93, "9"},
                           {10, "0"},
                           {20, "0"},
                           {75, "0"}}));
    auto* hatch = object<OdDbHatch>(*db, "A0");
    ASSERT_NE(hatch, nullptr);
    EXPECT_TRUE(hatch->isSolidFill());
    EXPECT_TRUE(hatch->loops().empty());
    expectRoundTrips(*db, *hatch);
}

TEST(RasterImage, PixelsMapToTheWorldWithRowsRunningDown) {
    auto db = drawing(dxf(
        {{0, "IMAGE"}, {5, "A0"}, {330, "2"},  {100, "AcDbEntity"}, {8, "0"},     {100, "AcDbRasterImage"},
         {90, "0"},    {10, "1"}, {20, "1"},   {30, "0"},           {11, "0.1"},  {21, "0"},
         {31, "0"},    {12, "0"}, {22, "0.1"}, {32, "0"},           {13, "100"},  {23, "50"},
         {340, "B0"},  {70, "7"}, {280, "1"},  {281, "60"},         {282, "50"},  {283, "0"},
         {360, "B1"},  {71, "1"}, {91, "2"},   {14, "-0.5"},        {24, "-0.5"}, {14, "49.5"},
         {24, "24.5"}}));
    auto* image = object<OdDbRasterImage>(*db, "A0");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->imageSize(), OdGePoint2d(100, 50));
    EXPECT_EQ(image->imageDefHandle(), 0xB0u);
    EXPECT_EQ(image->brightness(), 60);
    EXPECT_TRUE(image->isClipped());
    EXPECT_TRUE(image->isSetDisplayOpt(OdDbRasterImage::kClip));
    EXPECT_EQ(image->clipBoundaryType(), OdDbRasterImage::kRect);
    // The top left pixel corner is the image's top left corner.
    EXPECT_TRUE(image->pixelToWcs(OdGePoint2d(-0.5, -0.5)).isEqualTo(OdGePoint3d(1, 6, 0), kTight));
    auto outline = image->boundaryWcs();
    ASSERT_EQ(outline.size(), 4u);
    EXPECT_TRUE(outline[2].isEqualTo(OdGePoint3d(6, 3.5, 0), 1e-9));
    image->setClipped(false);
    EXPECT_TRUE(image->boundaryWcs()[2].isEqualTo(OdGePoint3d(11, 6, 0), 1e-9));
    EXPECT_THROW(image->setClipBoundary(OdDbRasterImage::kPoly, {{0, 0}, {1, 1}}), std::invalid_argument);
    expectRoundTrips(*db, *image);
}

TEST(Wipeout, BoundaryBecomesAOnePixelImage) {
    auto db = drawing(dxf(
        {{0, "WIPEOUT"}, {5, "A0"},    {330, "2"},   {100, "AcDbEntity"}, {8, "0"},    {100, "AcDbWipeout"},
         {90, "0"},      {10, "0"},    {20, "0"},    {30, "0"},           {11, "1"},   {21, "0"},
         {31, "0"},      {12, "0"},    {22, "1"},    {32, "0"},           {13, "1"},   {23, "1"},
         {340, "0"},     {70, "7"},    {280, "1"},   {281, "50"},         {282, "50"}, {283, "0"},
         {71, "2"},      {91, "4"},    {14, "-0.5"}, {24, "0.5"},         {14, "0.5"}, {24, "0.5"},
         {14, "0.5"},    {24, "-0.5"}, {14, "-0.5"}, {24, "0.5"},         {290, "0"},  {1001, "ACME"},
         {1000, "mask"}}));
    auto* wipeout = object<OdDbWipeout>(*db, "A0");
    ASSERT_NE(wipeout, nullptr);
    ASSERT_EQ(wipeout->boundaryWcs().size(), 3u); // the closing point is dropped

    const std::vector<OdGePoint3d> box = {{2, 1, 0}, {6, 1, 0}, {6, 3, 0}, {2, 3, 0}};
    wipeout->setBoundary(box);
    auto outline = wipeout->boundaryWcs();
    ASSERT_EQ(outline.size(), 4u);
    for (std::size_t i = 0; i < box.size(); ++i) EXPECT_TRUE(outline[i].isEqualTo(box[i], 1e-12)) << i;
    EXPECT_EQ(wipeout->clipBoundary().size(), 5u);
    EXPECT_EQ(wipeout->getInt(91), 5);
    EXPECT_EQ(snapshot(*wipeout).back(), "1000 mask");
    // Type, count and corners stay one run, in place before group 290.
    const Lines tags = snapshot(*wipeout);
    auto count = std::find(tags.begin(), tags.end(), "91 5");
    ASSERT_NE(count, tags.end());
    EXPECT_EQ(count[-1], "71 2");
    EXPECT_EQ(count[1], "14 -0.5");
    EXPECT_EQ(count[11], "290 0");

    const Lines before = snapshot(*wipeout);
    EXPECT_THROW(wipeout->setBoundary({{0, 0, 0}, {1, 1, 0}, {2, 2, 0}}), std::invalid_argument);
    EXPECT_THROW(wipeout->setBoundary({{0, 0, 0}, {1, 1, 0}}), std::invalid_argument);
    EXPECT_EQ(snapshot(*wipeout), before);
    expectRoundTrips(*db, *wipeout);
}

TEST(Wipeout, TiltedPlanesKeepTheirShape) {
    auto db = drawing(
        dxf({{0, "WIPEOUT"}, {5, "A0"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbWipeout"}}));
    auto* wipeout = object<OdDbWipeout>(*db, "A0");
    ASSERT_NE(wipeout, nullptr);
    // A triangle on the plane x = 5 (normal along x).
    const std::vector<OdGePoint3d> triangle = {{5, 0, 0}, {5, 4, 0}, {5, 0, 2}};
    wipeout->setBoundary(triangle, OdGeVector3d(1, 0, 0));
    auto outline = wipeout->boundaryWcs();
    ASSERT_EQ(outline.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(outline[i].isEqualTo(triangle[i], 1e-12)) << i;
    EXPECT_TRUE(wipeout->isClipped());
    expectRoundTrips(*db, *wipeout);
}

TEST(ModelerGeometry, DataIsKeptAsStored) {
    auto db = drawing(dxf({{0, "REGION"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbModelerGeometry"},
                           {70, "1"},
                           {1, "400 0 1 0"},
                           {1, "16 long line"},
                           {3, " continued"},
                           {0, "3DSOLID"},
                           {5, "A1"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbModelerGeometry"},
                           {70, "1"},
                           {100, "AcDb3dSolid"},
                           {350, "0"},
                           {0, "BODY"},
                           {5, "A2"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbModelerGeometry"},
                           {70, "1"}}));
    auto* region = object<OdDbRegion>(*db, "A0");
    ASSERT_NE(region, nullptr);
    EXPECT_EQ(region->modelerData(), "400 0 1 0\n16 long line continued");
    EXPECT_NE(object<OdDb3dSolid>(*db, "A1"), nullptr);
    EXPECT_FALSE(object<OdDb3dSolid>(*db, "A1")->hasModelerData());
    EXPECT_NE(object<OdDbBody>(*db, "A2"), nullptr);
    for (const char* h : {"A0", "A1", "A2"}) expectRoundTrips(*db, *object<OdDbEntity>(*db, h));
}

} // namespace
