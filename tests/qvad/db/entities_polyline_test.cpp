// Light polylines (vertex runs with widths and bulges) and the four kinds of POLYLINE with their
// vertex entities.

#include "entities_drawing.h"
#include "qvad/db/entities/OdDbHeavyPolyline.h"
#include "qvad/db/entities/OdDbPolyFaceMesh.h"
#include "qvad/db/entities/OdDbPolyline.h"

#include <gtest/gtest.h>
#include <numbers>

using namespace entities_test;

namespace {

const OdGeTol kTight(1e-12);

// Three vertices: the first with its own widths and a half-circle bulge, the second bare, the third
// with a bulge only; an id group (91) as newer files write them; normal -z; extended data after.
std::string lightPolyline() {
    return dxf({{0, "LWPOLYLINE"},   {5, "A0"},     {330, "2"},
                {100, "AcDbEntity"}, {8, "0"},      {100, "AcDbPolyline"},
                {90, "3"},           {70, "128"},   {43, "0.25"},
                {38, "2.5"},         {10, "0"},     {20, "0"},
                {91, "7"},           {40, "0.5"},   {41, "1.0"},
                {42, "1"},           {10, "4"},     {20, "0"},
                {10, "4"},           {20, "3"},     {42, "-0.5"},
                {210, "0"},          {220, "0"},    {230, "-1"},
                {1001, "ACME"},      {1000, "keep"}});
}

TEST(LightPolyline, ParsesVerticesWithTheirWidthsAndBulges) {
    auto db = drawing(lightPolyline());
    auto* pline = object<OdDbPolyline>(*db, "A0");
    ASSERT_NE(pline, nullptr);
    ASSERT_EQ(pline->numVerts(), 3u);
    EXPECT_EQ(pline->getPointAt(1), OdGePoint2d(4, 0));
    EXPECT_DOUBLE_EQ(pline->getBulgeAt(0), 1.0);
    EXPECT_DOUBLE_EQ(pline->getBulgeAt(1), 0.0);
    EXPECT_DOUBLE_EQ(pline->getBulgeAt(2), -0.5);
    double s = 0, e = 0;
    pline->getWidthsAt(0, s, e);
    EXPECT_EQ(std::pair(s, e), std::pair(0.5, 1.0));
    pline->getWidthsAt(1, s, e); // no widths of its own: the constant width
    EXPECT_EQ(std::pair(s, e), std::pair(0.25, 0.25));
    EXPECT_FALSE(pline->isClosed());
    EXPECT_TRUE(pline->hasPlinegen());
    EXPECT_FALSE(pline->isOnlyLines());
    EXPECT_DOUBLE_EQ(pline->elevation(), 2.5);
    // Lifted to the elevation, then mirrored by the -z normal.
    EXPECT_TRUE(pline->getPointAtWcs(2).isEqualTo(OdGePoint3d(-4, 3, -2.5), kTight));
    auto arc = pline->arcSegmentAt(0);
    ASSERT_TRUE(arc.has_value());
    EXPECT_TRUE(arc->center.isEqualTo(OdGePoint2d(2, 0), kTight));
    EXPECT_FALSE(pline->arcSegmentAt(1).has_value());
    EXPECT_FALSE(pline->arcSegmentAt(2).has_value()); // open: no closing segment
    EXPECT_THROW(pline->getPointAt(3), std::out_of_range);
    // The one-pass reader agrees with the per-vertex getters.
    const auto all = pline->getVertices();
    ASSERT_EQ(all.size(), 3u);
    for (unsigned i = 0; i < 3; ++i) {
        pline->getWidthsAt(i, s, e);
        EXPECT_EQ(all[i].point, pline->getPointAt(i)) << i;
        EXPECT_EQ(all[i].bulge, pline->getBulgeAt(i)) << i;
        EXPECT_EQ(std::pair(all[i].startWidth, all[i].endWidth), std::pair(s, e)) << i;
    }
    expectRoundTrips(*db, *pline);
}

TEST(LightPolyline, VertexSettersTouchOnlyTheirVertex) {
    auto db = drawing(lightPolyline());
    auto* pline = object<OdDbPolyline>(*db, "A0");
    ASSERT_NE(pline, nullptr);

    Lines before = snapshot(*pline);
    pline->setBulgeAt(1, 0.25); // the bare vertex gets a bulge after its coordinates
    EXPECT_EQ(changes(before, snapshot(*pline)), (Lines{"+42 0.25"}));
    EXPECT_DOUBLE_EQ(pline->getBulgeAt(1), 0.25);
    EXPECT_EQ(snapshot(*pline)[17], "42 0.25");

    before = snapshot(*pline);
    pline->setBulgeAt(1, 0.25);
    pline->setWidthsAt(1, 0.25, 0.25); // already its widths through the constant width
    EXPECT_TRUE(changes(before, snapshot(*pline)).empty());

    pline->setWidthsAt(2, 0.0, 2.0); // widths go before the bulge
    EXPECT_EQ(changes(before, snapshot(*pline)), (Lines{"+40 0.0", "+41 2.0"}));
    EXPECT_EQ(snapshot(*pline)[21], "41 2.0");
    EXPECT_EQ(snapshot(*pline)[22], "42 -0.5");

    before = snapshot(*pline);
    pline->setPointAt(0, OdGePoint2d(-1, -2));
    EXPECT_EQ(changes(before, snapshot(*pline)), (Lines{"-10 0", "+10 -1.0", "-20 0", "+20 -2.0"}));
    EXPECT_THROW(pline->setBulgeAt(5, 1.0), std::out_of_range);
    expectRoundTrips(*db, *pline);
}

TEST(LightPolyline, AddingAndRemovingVerticesKeepsTheCount) {
    auto db = drawing(lightPolyline());
    auto* pline = object<OdDbPolyline>(*db, "A0");
    ASSERT_NE(pline, nullptr);

    Lines before = snapshot(*pline);
    pline->addVertexAt(1, OdGePoint2d(2, -1), 0.5);
    // Written like the others: widths because a vertex has them, a bulge because it has one.
    EXPECT_EQ(changes(before, snapshot(*pline)),
              (Lines{"-90 3", "+90 4", "+10 2.0", "+20 -1.0", "+40 0.25", "+41 0.25", "+42 0.5"}));
    ASSERT_EQ(pline->numVerts(), 4u);
    EXPECT_EQ(pline->getPointAt(2), OdGePoint2d(4, 0));

    pline->addVertexAt(4, OdGePoint2d(0, 3)); // appended before the normal
    EXPECT_EQ(pline->getPointAt(4), OdGePoint2d(0, 3));
    EXPECT_EQ(pline->normal(), OdGeVector3d(0, 0, -1));
    EXPECT_THROW(pline->addVertexAt(9, OdGePoint2d()), std::out_of_range);

    pline->removeVertexAt(0);
    EXPECT_EQ(pline->numVerts(), 4u);
    EXPECT_EQ(pline->getInt(90), 4);
    EXPECT_EQ(pline->getPointAt(0), OdGePoint2d(2, -1));
    EXPECT_EQ(snapshot(*pline).back(), "1000 keep");

    pline->setClosed(true);
    EXPECT_TRUE(pline->isClosed());
    EXPECT_EQ(pline->getInt(70), 129);
    pline->setConstantWidth(0.75);
    double s = 0, e = 0;
    pline->getWidthsAt(0, s, e);
    EXPECT_EQ(std::pair(s, e), std::pair(0.75, 0.75));
    expectRoundTrips(*db, *pline);
}

TEST(LightPolyline, NewPolylineGrowsInFileOrder) {
    auto db = drawing(dxf(
        {{0, "LWPOLYLINE"}, {5, "A0"}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}, {100, "AcDbPolyline"}}));
    auto* pline = object<OdDbPolyline>(*db, "A0");
    ASSERT_NE(pline, nullptr);
    EXPECT_EQ(pline->numVerts(), 0u);
    pline->addVertexAt(0, OdGePoint2d(1, 1));
    pline->addVertexAt(1, OdGePoint2d(2, 2), 0.0, 0.0, 1.0);
    pline->setElevation(3);
    pline->setClosed(true);
    EXPECT_EQ(snapshot(*pline),
              (Lines{"5 A0", "330 2", "100 AcDbEntity", "8 0", "100 AcDbPolyline", "90 2", "70 1", "38 3.0",
                     "10 1.0", "20 1.0", "10 2.0", "20 2.0", "40 0.0", "41 1.0"}));
    expectRoundTrips(*db, *pline);
}

std::string headTags(const char* handle, const char* subclass, const char* flags) {
    return dxf({{0, "POLYLINE"},
                {5, handle},
                {330, "2"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, subclass},
                {66, "1"},
                {10, "0"},
                {20, "0"},
                {30, "1.5"},
                {70, flags}});
}

std::string vertex(const char* handle, const char* subclass, const char* x, const char* y, const char* z,
                   const char* flags) {
    return dxf({{0, "VERTEX"},
                {5, handle},
                {330, "2"},
                {100, "AcDbEntity"},
                {8, "0"},
                {100, "AcDbVertex"},
                {100, subclass},
                {10, x},
                {20, y},
                {30, z},
                {70, flags}});
}

std::string seqend(const char* handle) {
    return dxf({{0, "SEQEND"}, {5, handle}, {330, "2"}, {100, "AcDbEntity"}, {8, "0"}});
}

TEST(HeavyPolyline, FlagsChooseTheKindAndVerticesFollow) {
    std::string text = headTags("A0", "AcDb2dPolyline", "1") +
                       vertex("A1", "AcDb2dVertex", "0", "0", "0", "0") +
                       vertex("A2", "AcDb2dVertex", "4", "0", "0", "0") + seqend("A3");
    text += headTags("B0", "AcDb3dPolyline", "8") +
            vertex("B1", "AcDb3dPolylineVertex", "0", "0", "0", "32") +
            vertex("B2", "AcDb3dPolylineVertex", "1", "2", "3", "32") + seqend("B3");
    text += headTags("C0", "AcDbPolygonMesh", "48") +
            vertex("C1", "AcDbPolygonMeshVertex", "0", "0", "0", "64") +
            vertex("C2", "AcDbPolygonMeshVertex", "0", "1", "0", "64") +
            vertex("C3", "AcDbPolygonMeshVertex", "1", "0", "0", "64") +
            vertex("C4", "AcDbPolygonMeshVertex", "1", "1", "1", "64") + seqend("C5");
    auto db = drawing(text);

    auto* flat = object<OdDb2dPolyline>(*db, "A0");
    ASSERT_NE(flat, nullptr);
    EXPECT_TRUE(flat->isClosed());
    EXPECT_DOUBLE_EQ(flat->elevation(), 1.5);
    EXPECT_EQ(flat->polyType(), OdDb2dPolyline::k2dSimplePoly);
    auto flatVertices = flat->vertices();
    ASSERT_EQ(flatVertices.size(), 2u);
    EXPECT_NE(dynamic_cast<OdDb2dVertex*>(flatVertices[1]), nullptr);
    EXPECT_TRUE(flat->vertexPositionWcs(*flatVertices[1]).isEqualTo(OdGePoint3d(4, 0, 1.5), kTight));

    auto* spatial = object<OdDb3dPolyline>(*db, "B0");
    ASSERT_NE(spatial, nullptr);
    ASSERT_EQ(spatial->vertices().size(), 2u);
    EXPECT_NE(dynamic_cast<OdDb3dPolylineVertex*>(spatial->vertices()[1]), nullptr);
    EXPECT_EQ(spatial->vertices()[1]->position(), OdGePoint3d(1, 2, 3));

    // The mesh's head gives no grid size; the vertices are still there.
    auto* mesh = object<OdDbPolygonMesh>(*db, "C0");
    ASSERT_NE(mesh, nullptr);
    EXPECT_TRUE(mesh->isNClosed());
    EXPECT_FALSE(mesh->isMClosed());
    EXPECT_EQ(mesh->vertices().size(), 4u);
    EXPECT_EQ(mesh->vertexAt(0, 0), nullptr);

    for (const char* h : {"A0", "B0", "C0"}) expectRoundTrips(*db, *object<OdDbEntity>(*db, h));

    Lines before = snapshot(*flat);
    flat->setElevation(-2);
    flat->setClosed(false);
    EXPECT_EQ(changes(before, snapshot(*flat)), (Lines{"-30 1.5", "+30 -2.0", "-70 1", "+70 0"}));
}

TEST(HeavyPolyline, MeshGridAndPolyfaceRecords) {
    std::string text = dxf({{0, "POLYLINE"},
                            {5, "A0"},
                            {330, "2"},
                            {100, "AcDbEntity"},
                            {8, "0"},
                            {100, "AcDbPolygonMesh"},
                            {66, "1"},
                            {10, "0"},
                            {20, "0"},
                            {30, "0"},
                            {70, "16"},
                            {71, "2"},
                            {72, "2"}});
    for (const char* h : {"A1", "A2", "A3", "A4"})
        text += vertex(h, "AcDbPolygonMeshVertex", h + 1, "0", "0", "64");
    text += seqend("A5");
    text += dxf({{0, "POLYLINE"},
                 {5, "B0"},
                 {330, "2"},
                 {100, "AcDbEntity"},
                 {8, "0"},
                 {100, "AcDbPolyFaceMesh"},
                 {66, "1"},
                 {10, "0"},
                 {20, "0"},
                 {30, "0"},
                 {70, "64"},
                 {71, "3"},
                 {72, "1"}});
    text += vertex("B1", "AcDbPolyFaceMeshVertex", "0", "0", "0", "192");
    text += vertex("B2", "AcDbPolyFaceMeshVertex", "1", "0", "0", "192");
    text += vertex("B3", "AcDbPolyFaceMeshVertex", "1", "1", "0", "192");
    text += dxf({{0, "VERTEX"},
                 {5, "B4"},
                 {330, "2"},
                 {100, "AcDbEntity"},
                 {8, "0"},
                 {100, "AcDbFaceRecord"},
                 {10, "0"},
                 {20, "0"},
                 {30, "0"},
                 {70, "128"},
                 {71, "1"},
                 {72, "-2"},
                 {73, "3"}});
    text += seqend("B5");
    auto db = drawing(text);

    auto* mesh = object<OdDbPolygonMesh>(*db, "A0");
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->mSize(), 2);
    EXPECT_EQ(mesh->nSize(), 2);
    ASSERT_NE(mesh->vertexAt(1, 0), nullptr);
    EXPECT_EQ(mesh->vertexAt(1, 0)->position().x, 3.0); // row 1, column 0: the third vertex "A3"
    EXPECT_EQ(mesh->vertexAt(2, 0), nullptr);
    EXPECT_EQ(mesh->polyMeshType(), OdDbPolygonMesh::kSimpleMesh);

    auto* faces = object<OdDbPolyFaceMesh>(*db, "B0");
    ASSERT_NE(faces, nullptr);
    EXPECT_EQ(faces->numVertices(), 3);
    EXPECT_EQ(faces->meshVertices().size(), 3u);
    ASSERT_EQ(faces->faces().size(), 1u);
    OdDbFaceRecord* face = faces->faces()[0];
    EXPECT_EQ(face->getVertexAt(1), 2);
    EXPECT_FALSE(face->isEdgeVisibleAt(1));
    EXPECT_TRUE(face->isEdgeVisibleAt(2));
    EXPECT_EQ(face->getVertexAt(3), 0);
    face->setVertexAt(1, 3); // the hidden edge stays hidden
    EXPECT_EQ(face->getInt(72), -3);
    EXPECT_THROW(face->getVertexAt(4), std::out_of_range);
    expectRoundTrips(*db, *faces);
    expectRoundTrips(*db, *mesh);
}

} // namespace
