#include "qvad/ge/ocs.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

const OdGeTol kTight(1e-12);
constexpr double kPolarCap = 1.0 / 64.0;
constexpr double kNudge = 1e-9;

OdGeVector3d unitNormal(double nx, double ny) {
    return {nx, ny, std::sqrt(1.0 - nx * nx - ny * ny)};
}

TEST(ArbitraryAxis, WorldZGivesTheWorldAxes) {
    const OcsAxes axes = ocsAxes(OdGeVector3d(0.0, 0.0, 3.0));
    EXPECT_TRUE(axes.xAxis.isEqualTo(OdGeVector3d::kXAxis, kTight));
    EXPECT_TRUE(axes.yAxis.isEqualTo(OdGeVector3d::kYAxis, kTight));
    EXPECT_TRUE(axes.zAxis.isEqualTo(OdGeVector3d::kZAxis, kTight));
    const OdGePoint3d p(1.5, -2.0, 7.0);
    EXPECT_TRUE(ocsToWcs(p, OdGeVector3d::kZAxis).isEqualTo(p, kTight));
    EXPECT_TRUE(OdGeMatrix3d::planeToWorld(OdGeVector3d::kZAxis).isEqualTo(OdGeMatrix3d::kIdentity, kTight));
}

TEST(ArbitraryAxis, NegativeZMirrorsX) {
    // Wy x (-Wz) = -Wx, and then N x Ax = Wy: the classic mirrored arc of drawing files.
    const OdGeVector3d down(0.0, 0.0, -1.0);
    const OcsAxes axes = ocsAxes(down);
    EXPECT_TRUE(axes.xAxis.isEqualTo(-OdGeVector3d::kXAxis, kTight));
    EXPECT_TRUE(axes.yAxis.isEqualTo(OdGeVector3d::kYAxis, kTight));
    EXPECT_TRUE(ocsToWcs(OdGePoint3d(1.0, 2.0, 3.0), down).isEqualTo(OdGePoint3d(-1.0, 2.0, -3.0), kTight));
}

TEST(ArbitraryAxis, HandWorkedNormalOutsideThePolarCap) {
    // N = Wx: Ax = Wz x Wx = Wy, Ay = Wx x Wy = Wz.
    const OdGeVector3d n(2.0, 0.0, 0.0);
    const OcsAxes axes = ocsAxes(n);
    EXPECT_TRUE(axes.xAxis.isEqualTo(OdGeVector3d::kYAxis, kTight));
    EXPECT_TRUE(axes.yAxis.isEqualTo(OdGeVector3d::kZAxis, kTight));
    EXPECT_TRUE(ocsToWcs(OdGePoint3d(1.0, 2.0, 3.0), n).isEqualTo(OdGePoint3d(3.0, 1.0, 2.0), kTight));
    EXPECT_TRUE(wcsToOcs(OdGePoint3d(3.0, 1.0, 2.0), n).isEqualTo(OdGePoint3d(1.0, 2.0, 3.0), kTight));
}

// On either side of the 1/64 boundary the two rules give x axes far apart, so testing the wrong component
// or the wrong combination of components picks the wrong one.
TEST(ArbitraryAxis, PolarCapBoundaryInX) {
    const OdGeVector3d inside = unitNormal(kPolarCap - kNudge, 0.0);
    const OdGeVector3d outside = unitNormal(kPolarCap + kNudge, 0.0);
    // Inside: Wy x N = (Nz, 0, -Nx), nearly the world x axis.
    EXPECT_TRUE(ocsAxes(inside).xAxis.isEqualTo(OdGeVector3d(inside.z, 0.0, -inside.x).normal(), kTight));
    // Outside: Wz x N = (-Ny, Nx, 0), the world y axis.
    EXPECT_TRUE(ocsAxes(outside).xAxis.isEqualTo(OdGeVector3d::kYAxis, kTight));
}

TEST(ArbitraryAxis, PolarCapBoundaryInY) {
    const OdGeVector3d inside = unitNormal(0.0, kPolarCap - kNudge);
    const OdGeVector3d outside = unitNormal(0.0, kPolarCap + kNudge);
    EXPECT_TRUE(ocsAxes(inside).xAxis.isEqualTo(OdGeVector3d::kXAxis, kTight));
    EXPECT_TRUE(ocsAxes(outside).xAxis.isEqualTo(-OdGeVector3d::kXAxis, kTight));
    // Both coordinates must be inside the cap; one small coordinate is not enough.
    const OdGeVector3d oneOutside = unitNormal(kPolarCap - kNudge, kPolarCap + kNudge);
    EXPECT_TRUE(
        ocsAxes(oneOutside).xAxis.isEqualTo(OdGeVector3d(-oneOutside.y, oneOutside.x, 0.0).normal(), kTight));
}

// A unit normal whose x is exactly 1/64 even after normalising, found among the neighbours of the exact
// z so that the test does not depend on how the square root rounds.
OdGeVector3d normalExactlyOnTheCapBoundary() {
    double z = std::sqrt(1.0 - kPolarCap * kPolarCap);
    for (int step = 0; step < 16; ++step, z = std::nextafter(z, 2.0)) {
        const OdGeVector3d n(kPolarCap, 0.0, z);
        if (n.length() == 1.0) return n;
    }
    return {};
}

TEST(ArbitraryAxis, TheBoundaryItselfIsOutsideTheCap) {
    const OdGeVector3d n = normalExactlyOnTheCapBoundary();
    ASSERT_EQ(n.normal().x, kPolarCap);
    EXPECT_TRUE(ocsAxes(n).xAxis.isEqualTo(OdGeVector3d::kYAxis, kTight));
}

TEST(ArbitraryAxis, ZeroNormalMeansWorldZ) {
    const OdGePoint3d p(4.0, 5.0, 6.0);
    EXPECT_TRUE(ocsToWcs(p, OdGeVector3d()).isEqualTo(p));
    EXPECT_TRUE(wcsToOcs(p, OdGeVector3d()).isEqualTo(p));
}

TEST(ArbitraryAxis, RandomNormalsGiveRightHandedFramesAndRoundTrip) {
    std::mt19937 random(20240521);
    std::uniform_real_distribution<double> coordinate(-1.0, 1.0);
    for (int i = 0; i < 500; ++i) {
        OdGeVector3d normal(coordinate(random), coordinate(random), coordinate(random));
        // Every tenth normal is squeezed into the polar cap so that both rules are exercised.
        if (i % 10 == 0) normal.set(normal.x / 80.0, normal.y / 80.0, normal.z);
        if (normal.isZeroLength(OdGeTol(1e-3))) continue;
        SCOPED_TRACE(i);

        const OcsAxes axes = ocsAxes(normal * 3.0);
        EXPECT_TRUE(axes.xAxis.isUnitLength(kTight) && axes.yAxis.isUnitLength(kTight));
        EXPECT_NEAR(axes.xAxis.dotProduct(axes.yAxis), 0.0, 1e-12);
        EXPECT_NEAR(axes.xAxis.dotProduct(normal), 0.0, 1e-12);
        EXPECT_TRUE(axes.xAxis.crossProduct(axes.yAxis).isEqualTo(normal.normal(), kTight));
        // The x axis of the rule always lies in the world xy plane outside the cap, in the yz plane inside.
        const bool inCap = std::abs(axes.zAxis.x) < kPolarCap && std::abs(axes.zAxis.y) < kPolarCap;
        EXPECT_NEAR(inCap ? axes.xAxis.y : axes.xAxis.z, 0.0, 1e-15);

        const OdGePoint3d world(coordinate(random) * 100.0, coordinate(random) * 100.0, coordinate(random));
        const OdGePoint3d object = wcsToOcs(world, normal);
        EXPECT_TRUE(ocsToWcs(object, normal).isEqualTo(world, OdGeTol(1e-10)));
        EXPECT_TRUE((OdGeMatrix3d::planeToWorld(normal) * object).isEqualTo(world, OdGeTol(1e-10)));
        EXPECT_TRUE((OdGeMatrix3d::worldToPlane(normal) * world).isEqualTo(object, OdGeTol(1e-10)));
        // Elevation is the distance along the normal.
        EXPECT_NEAR(object.z, world.asVector().dotProduct(normal.normal()), 1e-10);

        const OdGeVector3d direction(1.0, -2.0, 0.5);
        EXPECT_TRUE(wcsToOcs(ocsToWcs(direction, normal), normal).isEqualTo(direction, OdGeTol(1e-12)));
    }
}

} // namespace
