#include "tooldeck/commands/cleanup/curve_measure.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace qvtd::quantity {
namespace {

constexpr double kPi = std::numbers::pi;

// An entity data list built through the host, released when the test ends.
struct DataList {
    qv_resbuf* head;
    explicit DataList(qv_resbuf* list) : head(list) {}
    ~DataList() { qvutRelRb(head); }
};

TEST(CurveMeasure, PolygonAreaAndPerimeterIgnoreTheDirection) {
    std::vector<PlanePoint> square = {{0, 0}, {4, 0}, {4, 3}, {0, 3}};
    EXPECT_DOUBLE_EQ(polygonArea(square), 12.0);
    std::vector<PlanePoint> clockwise(square.rbegin(), square.rend());
    EXPECT_DOUBLE_EQ(polygonArea(clockwise), 12.0);
    EXPECT_DOUBLE_EQ(polygonPerimeter(square, true), 14.0);
    EXPECT_DOUBLE_EQ(polygonPerimeter(square, false), 11.0);
}

TEST(CurveMeasure, BulgedSegmentsAreArcs) {
    // Bulge 1 is a half circle over the chord.
    EXPECT_NEAR(bulgeSegmentLength({0, 0}, {2, 0}, 1.0), kPi, 1e-12);
    EXPECT_NEAR(bulgeSegmentLength({0, 0}, {2, 0}, -1.0), kPi, 1e-12);
    EXPECT_DOUBLE_EQ(bulgeSegmentLength({0, 0}, {3, 4}, 0.0), 5.0);
    // A quarter circle of radius 1: bulge tan(pi/8).
    EXPECT_NEAR(bulgeSegmentLength({1, 0}, {0, 1}, std::tan(kPi / 8)), kPi / 2, 1e-12);
}

TEST(CurveMeasure, ClosedPolylineWithArcsEnclosesTheExactArea) {
    // A 2 x 2 square whose top side bulges outwards into a half circle of radius 1, counterclockwise.
    std::vector<BulgeVertex> outward = {{{0, 0}, 0}, {{2, 0}, 0}, {{2, 2}, 1.0}, {{0, 2}, 0}};
    EXPECT_NEAR(polylineArea(outward), 4.0 + kPi / 2, 1e-12);
    EXPECT_NEAR(polylineLength(outward, true), 6.0 + kPi, 1e-12);
    EXPECT_NEAR(polylineLength(outward, false), 4.0 + kPi, 1e-12);
    // The same arc bulging inwards takes the half disc away.
    std::vector<BulgeVertex> inward = {{{0, 0}, 0}, {{2, 0}, 0}, {{2, 2}, -1.0}, {{0, 2}, 0}};
    EXPECT_NEAR(polylineArea(inward), 4.0 - kPi / 2, 1e-12);
    // Two half circles make a full disc, whichever way round.
    std::vector<BulgeVertex> disc = {{{0, 0}, 1.0}, {{2, 0}, 1.0}};
    EXPECT_NEAR(polylineArea(disc), kPi, 1e-12);
    std::vector<BulgeVertex> discClockwise = {{{0, 0}, -1.0}, {{2, 0}, -1.0}};
    EXPECT_NEAR(polylineArea(discClockwise), kPi, 1e-12);
}

TEST(CurveMeasure, EllipseLengths) {
    EXPECT_NEAR(ellipsePerimeter(1.0, 1.0), 2 * kPi, 1e-9);
    // Known value for semi-axes 2 and 1.
    EXPECT_NEAR(ellipsePerimeter(2.0, 1.0), 9.688448220547675, 1e-9);
    EXPECT_NEAR(ellipseArcLength(3.0, 3.0, 0.0, kPi / 2), 3.0 * kPi / 2, 1e-9);
}

TEST(CurveMeasure, EntityDataListsOfEveryCurveType) {
    qv_point a = {0, 0, 0};
    qv_point b = {3, 4, 12};
    DataList line(qvutBuildList(QV_RTDXF0, "LINE", 10, a, 11, b, 0));
    auto lineMeasure = measureEntityData(line.head);
    ASSERT_TRUE(lineMeasure);
    EXPECT_DOUBLE_EQ(lineMeasure->length, 13.0);
    EXPECT_FALSE(lineMeasure->closed);

    DataList circle(qvutBuildList(QV_RTDXF0, "CIRCLE", 10, a, 40, 2.0, 0));
    auto circleMeasure = measureEntityData(circle.head);
    ASSERT_TRUE(circleMeasure);
    EXPECT_TRUE(circleMeasure->closed);
    EXPECT_NEAR(circleMeasure->area, 4 * kPi, 1e-12);
    EXPECT_NEAR(circleMeasure->length, 4 * kPi, 1e-12);

    // An arc from 350 to 10 degrees crosses zero: 20 degrees long.
    DataList arc(qvutBuildList(QV_RTDXF0, "ARC", 10, a, 40, 3.0, 50, 350 * kPi / 180, 51, 10 * kPi / 180, 0));
    auto arcMeasure = measureEntityData(arc.head);
    ASSERT_TRUE(arcMeasure);
    EXPECT_NEAR(arcMeasure->length, 3.0 * 20 * kPi / 180, 1e-12);
    EXPECT_FALSE(arcMeasure->closed);

    qv_point p0 = {0, 0, 0}, p1 = {2, 0, 0}, p2 = {2, 2, 0}, p3 = {0, 2, 0};
    DataList closedPolyline(
        qvutBuildList(QV_RTDXF0, "LWPOLYLINE", 90, 4, 70, 1, 10, p0, 10, p1, 10, p2, 42, 1.0, 10, p3, 0));
    auto polylineMeasure = measureEntityData(closedPolyline.head);
    ASSERT_TRUE(polylineMeasure);
    EXPECT_TRUE(polylineMeasure->closed);
    EXPECT_NEAR(polylineMeasure->area, 4.0 + kPi / 2, 1e-12);
    EXPECT_NEAR(polylineMeasure->length, 6.0 + kPi, 1e-12);

    DataList openPolyline(qvutBuildList(QV_RTDXF0, "LWPOLYLINE", 90, 3, 70, 0, 10, p0, 10, p1, 10, p2, 0));
    auto openMeasure = measureEntityData(openPolyline.head);
    ASSERT_TRUE(openMeasure);
    EXPECT_FALSE(openMeasure->closed);
    EXPECT_DOUBLE_EQ(openMeasure->area, 0.0);
    EXPECT_DOUBLE_EQ(openMeasure->length, 4.0);

    qv_point majorAxis = {2, 0, 0};
    DataList ellipse(
        qvutBuildList(QV_RTDXF0, "ELLIPSE", 10, a, 11, majorAxis, 40, 0.5, 41, 0.0, 42, 2 * kPi, 0));
    auto ellipseMeasure = measureEntityData(ellipse.head);
    ASSERT_TRUE(ellipseMeasure);
    EXPECT_TRUE(ellipseMeasure->closed);
    EXPECT_NEAR(ellipseMeasure->area, 2 * kPi, 1e-12);
    EXPECT_NEAR(ellipseMeasure->length, 9.688448220547675, 1e-9);

    DataList spline(qvutBuildList(QV_RTDXF0, "SPLINE", 70, 1, 11, p0, 11, p1, 11, p2, 11, p3, 0));
    auto splineMeasure = measureEntityData(spline.head);
    ASSERT_TRUE(splineMeasure);
    EXPECT_TRUE(splineMeasure->closed);
    EXPECT_NEAR(splineMeasure->area, 4.0, 1e-12);

    DataList text(qvutBuildList(QV_RTDXF0, "TEXT", 10, a, 1, "12", 0));
    EXPECT_FALSE(measureEntityData(text.head));
}

} // namespace
} // namespace qvtd::quantity

namespace qvtd::quantity {
namespace {

TEST(CurveMeasure, HatchAreaIsItsOuterLoopsLessItsIslands) {
    qv_point elevation = {0, 0, 0};
    qv_point p0 = {0, 0, 0}, p1 = {2, 0, 0}, p2 = {2, 2, 0}, p3 = {0, 2, 0};
    qv_point centre = {1, 1, 0};
    qv_point seed = {0.1, 0.1, 0};
    // Outer: the square with a half-circle bulge (polyline loop, external). Island: a circle of radius
    // 0.5 made of two half arcs (edge loop), then the trailing seed point that must not be read as a
    // corner.
    DataList hatch(qvutBuildList(QV_RTDXF0, "HATCH", 10, elevation, 91, 2,                             //
                                 92, 3, 72, 1, 73, 1, 93, 4, 10, p0, 42, 0.0, 10, p1, 42, 0.0, 10, p2, //
                                 42, 1.0, 10, p3, 42, 0.0, 97, 0,                                      //
                                 92, 16, 93, 2,                                                        //
                                 72, 2, 10, centre, 40, 0.5, 50, 0.0, 51, kPi, 73, 1,                  //
                                 72, 2, 10, centre, 40, 0.5, 50, kPi, 51, 2 * kPi, 73, 1, 97, 0,       //
                                 75, 1, 98, 1, 10, seed, 0));
    ASSERT_NE(hatch.head, nullptr);
    auto measure = measureEntityData(hatch.head);
    ASSERT_TRUE(measure);
    EXPECT_TRUE(measure->closed);
    EXPECT_NEAR(measure->area, 4.0 + kPi / 2 - kPi / 4, 1e-9);
    EXPECT_DOUBLE_EQ(measure->length, 0.0);

    // A square of line edges, and a clockwise full arc (angles kept mirrored).
    qv_point q0 = {0, 0, 0}, q1 = {3, 0, 0}, q2 = {3, 3, 0}, q3 = {0, 3, 0};
    DataList lines(qvutBuildList(QV_RTDXF0, "HATCH", 10, elevation, 91, 1, 92, 1, 93, 4,              //
                                 72, 1, 10, q0, 11, q1, 72, 1, 10, q1, 11, q2, 72, 1, 10, q2, 11, q3, //
                                 72, 1, 10, q3, 11, q0, 97, 0, 75, 1, 0));
    auto square = measureEntityData(lines.head);
    ASSERT_TRUE(square);
    EXPECT_NEAR(square->area, 9.0, 1e-12);
    DataList clockwise(qvutBuildList(QV_RTDXF0, "HATCH", 10, elevation, 91, 1, 92, 1, 93, 1, 72, 2, 10,
                                     centre, 40, 2.0, 50, 0.0, 51, 2 * kPi, 73, 0, 97, 0, 0));
    auto disc = measureEntityData(clockwise.head);
    ASSERT_TRUE(disc);
    EXPECT_NEAR(disc->area, 4 * kPi, 1e-9);
    // An edge type it does not know (an elliptic edge) makes the hatch unmeasured rather than wrong.
    DataList elliptic(
        qvutBuildList(QV_RTDXF0, "HATCH", 10, elevation, 91, 1, 92, 1, 93, 1, 72, 3, 10, centre, 0));
    EXPECT_FALSE(measureEntityData(elliptic.head));
}

} // namespace
} // namespace qvtd::quantity
