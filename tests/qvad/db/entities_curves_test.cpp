// Lines, points, circles, arcs, ellipses, splines and leaders: typed properties read the stored
// tags, setters change exactly their own tags, and the tags survive data lists and saving.

#include "entities_drawing.h"
#include "qvad/db/entities/OdDbArc.h"
#include "qvad/db/entities/OdDbCircle.h"
#include "qvad/db/entities/OdDbEllipse.h"
#include "qvad/db/entities/OdDbLeader.h"
#include "qvad/db/entities/OdDbLine.h"
#include "qvad/db/entities/OdDbPoint.h"
#include "qvad/db/entities/OdDbSpline.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace entities_test;
using std::numbers::pi;

namespace {

const OdGeTol kTight(1e-12);

TEST(LineEntity, ReadsWritesAndLeavesExtendedDataAlone) {
    auto db = drawing(dxf({{0, "LINE"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "Walls"},
                           {62, "3"},
                           {100, "AcDbLine"},
                           {39, "0.5"},
                           {10, "1.5"},
                           {20, "2.25"},
                           {30, "0"},
                           {11, "10"},
                           {21, "20.0"},
                           {31, "-1"},
                           {1001, "ACME"},
                           {1010, "9"},
                           {1020, "8"},
                           {1030, "7"},
                           {1040, "1.25"}}));
    auto* line = object<OdDbLine>(*db, "A0");
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->startPoint(), OdGePoint3d(1.5, 2.25, 0.0));
    EXPECT_EQ(line->endPoint(), OdGePoint3d(10.0, 20.0, -1.0));
    EXPECT_DOUBLE_EQ(line->thickness(), 0.5);
    EXPECT_EQ(line->layer(), "Walls");
    EXPECT_NEAR(line->length(), std::sqrt(8.5 * 8.5 + 17.75 * 17.75 + 1.0), 1e-12);
    expectRoundTrips(*db, *line);

    Lines before = snapshot(*line);
    line->setEndPoint(OdGePoint3d(4.0, 5.0, 6.0));
    EXPECT_EQ(changes(before, snapshot(*line)),
              (Lines{"-11 10", "+11 4.0", "-21 20.0", "+21 5.0", "-31 -1", "+31 6.0"}));
    before = snapshot(*line);
    line->setThickness(0.0);
    EXPECT_EQ(changes(before, snapshot(*line)), (Lines{"-39 0.5", "+39 0.0"}));
    expectRoundTrips(*db, *line);
}

TEST(PointEntity, RotationIsRadiansOverStoredDegrees) {
    auto db = drawing(dxf({{0, "POINT"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbPoint"},
                           {10, "1"},
                           {20, "2"},
                           {30, "3"},
                           {50, "90"}}));
    auto* point = object<OdDbPoint>(*db, "A0");
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->position(), OdGePoint3d(1, 2, 3));
    EXPECT_NEAR(point->ecsRotation(), pi / 2, 1e-15);
    Lines before = snapshot(*point);
    point->setEcsRotation(pi);
    EXPECT_EQ(changes(before, snapshot(*point)), (Lines{"-50 90", "+50 180.0"}));
    expectRoundTrips(*db, *point);
}

TEST(CircleEntity, CentreIsStoredInObjectCoordinates) {
    // Normal -z mirrors x: the stored centre (2, 3, 4) lies at (-2, 3, -4) in the world.
    auto db = drawing(dxf({{0, "CIRCLE"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbCircle"},
                           {10, "2"},
                           {20, "3"},
                           {30, "4"},
                           {40, "1.5"},
                           {210, "0"},
                           {220, "0"},
                           {230, "-1"}}));
    auto* circle = object<OdDbCircle>(*db, "A0");
    ASSERT_NE(circle, nullptr);
    EXPECT_EQ(circle->center(), OdGePoint3d(2, 3, 4));
    EXPECT_TRUE(circle->centerWcs().isEqualTo(OdGePoint3d(-2, 3, -4), kTight));
    EXPECT_DOUBLE_EQ(circle->radius(), 1.5);
    EXPECT_TRUE(circle->isClosed());
    circle->setCenterWcs(OdGePoint3d(5, 6, 7));
    EXPECT_TRUE(circle->center().isEqualTo(OdGePoint3d(-5, 6, -7), kTight));
    Lines before = snapshot(*circle);
    circle->setRadius(2.0);
    EXPECT_EQ(changes(before, snapshot(*circle)), (Lines{"-40 1.5", "+40 2.0"}));
    expectRoundTrips(*db, *circle);
}

TEST(ArcEntity, AnglesEndPointsAndMirroredPlane) {
    auto db = drawing(dxf({{0, "ARC"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbCircle"},
                           {10, "1"},
                           {20, "1"},
                           {30, "0"},
                           {40, "2"},
                           {210, "0"},
                           {220, "0"},
                           {230, "-1"},
                           {100, "AcDbArc"},
                           {50, "0"},
                           {51, "90"}}));
    auto* arc = object<OdDbArc>(*db, "A0");
    ASSERT_NE(arc, nullptr);
    EXPECT_NEAR(arc->startAngle(), 0.0, 1e-15);
    EXPECT_NEAR(arc->endAngle(), pi / 2, 1e-15);
    EXPECT_NEAR(arc->includedAngle(), pi / 2, 1e-15);
    EXPECT_NEAR(arc->length(), pi, 1e-12);
    // Object point (3, 1) and (1, 3) mirror to world (-3, 1) and (-1, 3).
    EXPECT_TRUE(arc->startPointWcs().isEqualTo(OdGePoint3d(-3, 1, 0), kTight));
    EXPECT_TRUE(arc->endPointWcs().isEqualTo(OdGePoint3d(-1, 3, 0), kTight));

    Lines before = snapshot(*arc);
    arc->setEndAngle(pi);
    arc->setRadius(4);
    EXPECT_EQ(changes(before, snapshot(*arc)), (Lines{"-40 2", "+40 4.0", "-51 90", "+51 180.0"}));
    expectRoundTrips(*db, *arc);
}

TEST(EllipseEntity, AxesParametersAndClosure) {
    auto db = drawing(dxf({{0, "ELLIPSE"},
                           {5, "A0"},
                           {330, "2"},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbEllipse"},
                           {10, "1"},
                           {20, "2"},
                           {30, "0"},
                           {11, "3"},
                           {21, "0"},
                           {31, "0"},
                           {210, "0"},
                           {220, "0"},
                           {230, "1"},
                           {40, "0.5"},
                           {41, "0"},
                           {42, "6.283185307179586"}}));
    auto* ellipse = object<OdDbEllipse>(*db, "A0");
    ASSERT_NE(ellipse, nullptr);
    EXPECT_TRUE(ellipse->isClosed());
    EXPECT_TRUE(ellipse->minorAxis().isEqualTo(OdGeVector3d(0, 1.5, 0), kTight));
    EXPECT_TRUE(ellipse->pointAtParam(pi / 2).isEqualTo(OdGePoint3d(1, 3.5, 0), kTight));
    ellipse->setEndParam(pi);
    EXPECT_FALSE(ellipse->isClosed());
    EXPECT_DOUBLE_EQ(ellipse->endParam(), pi);
    expectRoundTrips(*db, *ellipse);
}

TEST(SplineEntity, ControlDataAndPointEdits) {
    auto db = drawing(
        dxf({{0, "SPLINE"}, {5, "A0"},  {330, "2"}, {100, "AcDbEntity"}, {8, "0"},  {100, "AcDbSpline"},
             {210, "0"},    {220, "0"}, {230, "1"}, {70, "12"},          {71, "2"}, {72, "6"},
             {73, "3"},     {74, "0"},  {40, "0"},  {40, "0"},           {40, "0"}, {40, "1"},
             {40, "1"},     {40, "1"},  {41, "1"},  {41, "0.5"},         {41, "1"}, {10, "0"},
             {20, "0"},     {30, "0"},  {10, "1"},  {20, "1"},           {30, "0"}, {10, "2"},
             {20, "0"},     {30, "0"}}));
    auto* spline = object<OdDbSpline>(*db, "A0");
    ASSERT_NE(spline, nullptr);
    EXPECT_EQ(spline->degree(), 2);
    EXPECT_TRUE(spline->isRational());
    EXPECT_TRUE(spline->isPlanar());
    EXPECT_FALSE(spline->isClosed());
    EXPECT_EQ(spline->knots(), (std::vector<double>{0, 0, 0, 1, 1, 1}));
    EXPECT_EQ(spline->weights(), (std::vector<double>{1, 0.5, 1}));
    ASSERT_EQ(spline->numControlPoints(), 3);
    EXPECT_EQ(spline->controlPoints()[1], OdGePoint3d(1, 1, 0));
    EXPECT_EQ(spline->numFitPoints(), 0);

    Lines before = snapshot(*spline);
    spline->setControlPointAt(1, OdGePoint3d(1, 2, 3));
    EXPECT_EQ(changes(before, snapshot(*spline)),
              (Lines{"-10 1", "+10 1.0", "-20 1", "+20 2.0", "-30 0", "+30 3.0"}));
    EXPECT_THROW(spline->setControlPointAt(3, OdGePoint3d()), std::out_of_range);
    EXPECT_THROW(spline->setFitPointAt(0, OdGePoint3d()), std::out_of_range);
    expectRoundTrips(*db, *spline);
}

TEST(LeaderEntity, VerticesKeepTheirCountInStep) {
    auto db = drawing(
        dxf({{0, "LEADER"},   {5, "A0"},  {330, "2"}, {100, "AcDbEntity"}, {8, "0"},  {100, "AcDbLeader"},
             {3, "Standard"}, {71, "1"},  {72, "0"},  {73, "3"},           {76, "2"}, {10, "0"},
             {20, "0"},       {30, "0"},  {10, "5"},  {20, "5"},           {30, "0"}, {340, "B0"},
             {211, "1"},      {221, "0"}, {231, "0"}}));
    auto* leader = object<OdDbLeader>(*db, "A0");
    ASSERT_NE(leader, nullptr);
    EXPECT_EQ(leader->dimensionStyle(), "Standard");
    EXPECT_TRUE(leader->hasArrowHead());
    EXPECT_EQ(leader->annoType(), OdDbLeader::kNoAnno);
    EXPECT_EQ(leader->annotationHandle(), 0xB0u);
    ASSERT_EQ(leader->numVertices(), 2);
    EXPECT_EQ(leader->vertexAt(1), OdGePoint3d(5, 5, 0));

    Lines before = snapshot(*leader);
    leader->appendVertex(OdGePoint3d(8, 5, 0));
    // The new vertex goes right after the others, before the pointer and direction groups.
    EXPECT_EQ(changes(before, snapshot(*leader)), (Lines{"-76 2", "+76 3", "+10 8.0", "+20 5.0", "+30 0.0"}));
    EXPECT_EQ(leader->numVertices(), 3);
    EXPECT_EQ(leader->vertexAt(2), OdGePoint3d(8, 5, 0));
    leader->removeVertexAt(0);
    EXPECT_EQ(leader->vertexAt(0), OdGePoint3d(5, 5, 0));
    EXPECT_EQ(leader->getInt(76), 2);
    EXPECT_THROW(leader->removeVertexAt(0), std::invalid_argument);
    EXPECT_THROW(leader->vertexAt(2), std::out_of_range);
    EXPECT_EQ(leader->numVertices(), 2);
    expectRoundTrips(*db, *leader);
}

} // namespace
