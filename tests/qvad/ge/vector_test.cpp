#include "qvad/ge/angle.h"
#include "qvad/ge/point2d.h"
#include "qvad/ge/point3d.h"
#include "qvad/ge/vector2d.h"
#include "qvad/ge/vector3d.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kEps = 1e-12;

TEST(Vector3d, CrossProductIsRightHanded) {
    EXPECT_TRUE(OdGeVector3d::kXAxis.crossProduct(OdGeVector3d::kYAxis).isEqualTo(OdGeVector3d::kZAxis));
    EXPECT_TRUE(OdGeVector3d::kYAxis.crossProduct(OdGeVector3d::kZAxis).isEqualTo(OdGeVector3d::kXAxis));
    EXPECT_TRUE(OdGeVector3d::kZAxis.crossProduct(OdGeVector3d::kXAxis).isEqualTo(OdGeVector3d::kYAxis));
}

TEST(Vector3d, UnsignedAngleCoversTheWholeHalfTurn) {
    const OdGeVector3d x = OdGeVector3d::kXAxis * 5.0;
    EXPECT_NEAR(x.angleTo(OdGeVector3d(1.0, 1.0, 0.0)), kPi / 4.0, kEps);
    EXPECT_NEAR(x.angleTo(OdGeVector3d(-1.0, 1e-9, 0.0)), kPi - 1e-9, 1e-15);
    EXPECT_NEAR(x.angleTo(OdGeVector3d(1.0, 1e-9, 0.0)), 1e-9, 1e-15);
    EXPECT_NEAR(x.angleTo(OdGeVector3d(0.0, 0.0, -2.0)), kPi / 2.0, kEps);
}

TEST(Vector3d, SignedAngleFollowsTheReferenceAxis) {
    const OdGeVector3d x = OdGeVector3d::kXAxis;
    const OdGeVector3d belowX(1.0, -1.0, 0.0);
    EXPECT_NEAR(x.angleTo(belowX, OdGeVector3d::kZAxis), 7.0 * kPi / 4.0, kEps);
    EXPECT_NEAR(x.angleTo(belowX, -OdGeVector3d::kZAxis), kPi / 4.0, kEps);
    EXPECT_NEAR(x.angleTo(x, OdGeVector3d::kZAxis), 0.0, kEps);
}

TEST(Vector3d, RotationIsCounterClockwiseAboutTheAxis) {
    OdGeVector3d v = OdGeVector3d::kXAxis;
    v.rotateBy(kPi / 2.0, OdGeVector3d::kZAxis * 7.0);
    EXPECT_TRUE(v.isEqualTo(OdGeVector3d::kYAxis, OdGeTol(kEps)));

    // A third of a turn about the space diagonal cycles the axes.
    OdGeVector3d w(1.0, 0.0, 0.0);
    w.rotateBy(2.0 * kPi / 3.0, OdGeVector3d(1.0, 1.0, 1.0));
    EXPECT_TRUE(w.isEqualTo(OdGeVector3d::kYAxis, OdGeTol(kEps)));

    // Components along the axis stay put.
    OdGeVector3d u(1.0, 2.0, 3.0);
    u.rotateBy(1.234, OdGeVector3d::kZAxis);
    EXPECT_NEAR(u.z, 3.0, kEps);
    EXPECT_NEAR(u.length(), std::sqrt(14.0), kEps);

    OdGePoint3d p(2.0, 1.0, 5.0);
    p.rotateBy(kPi / 2.0, OdGeVector3d::kZAxis, OdGePoint3d(1.0, 1.0, 0.0));
    EXPECT_TRUE(p.isEqualTo(OdGePoint3d(1.0, 2.0, 5.0), OdGeTol(kEps)));
}

TEST(Vector2d, AngleIsInTheFullTurnForEveryQuadrant) {
    for (int degrees = 0; degrees < 360; degrees += 15) {
        const double expected = degrees * kPi / 180.0;
        const OdGeVector2d v(3.0 * std::cos(expected), 3.0 * std::sin(expected));
        SCOPED_TRACE(degrees);
        EXPECT_NEAR(v.angle(), expected, kEps);
        EXPECT_GE(v.angle(), 0.0);
        EXPECT_LT(v.angle(), 2.0 * kPi);
    }
    // Just below the x axis is nearly a full turn, not a tiny negative angle.
    EXPECT_NEAR(OdGeVector2d(1.0, -1e-9).angle(), 2.0 * kPi - 1e-9, kEps);
}

TEST(Vector2d, CrossProductSignTellsTheTurn) {
    const OdGeVector2d east(2.0, 0.0);
    EXPECT_GT(east.crossProduct(OdGeVector2d(1.0, 0.1)), 0.0);
    EXPECT_LT(east.crossProduct(OdGeVector2d(1.0, -0.1)), 0.0);
    EXPECT_NEAR(east.crossProduct(east.perpVector()), east.lengthSqrd(), kEps);
    EXPECT_NEAR(east.angleTo(OdGeVector2d(-1.0, -1.0)), 3.0 * kPi / 4.0, kEps);
    EXPECT_TRUE(east.isParallelTo(OdGeVector2d(-5.0, 0.0)));
    EXPECT_FALSE(east.isParallelTo(OdGeVector2d(-5.0, 1e-3)));
    // Parallelism is a matter of direction: long vectors a hair apart in angle are still parallel.
    EXPECT_TRUE(OdGeVector2d(1000.0, 0.0).isParallelTo(OdGeVector2d(1000.0, 1e-9)));
}

TEST(Vector2d, RotationIsCounterClockwise) {
    OdGeVector2d v(1.0, 2.0);
    v.rotateBy(kPi / 2.0);
    EXPECT_TRUE(v.isEqualTo(OdGeVector2d(-2.0, 1.0), OdGeTol(kEps)));
    v.rotateBy(-kPi / 4.0);
    EXPECT_TRUE(v.isEqualTo(OdGeVector2d(-1.0, 3.0) * std::sqrt(0.5), OdGeTol(kEps)));

    OdGePoint2d p(3.0, 2.0);
    p.rotateBy(-kPi / 2.0, OdGePoint2d(2.0, 1.0));
    EXPECT_TRUE(p.isEqualTo(OdGePoint2d(3.0, 0.0), OdGeTol(kEps)));
}

TEST(Angles, NormalisationLandsInTheHalfOpenFullTurn) {
    EXPECT_NEAR(normalizeAngle(-kPi / 2.0), 3.0 * kPi / 2.0, kEps);
    EXPECT_NEAR(normalizeAngle(5.0 * kPi), kPi, kEps);
    EXPECT_NEAR(normalizeAngle(-7.0 * kPi / 2.0), kPi / 2.0, kEps);
    EXPECT_EQ(normalizeAngle(2.0 * kPi), 0.0);
    EXPECT_EQ(normalizeAngle(0.0), 0.0);
    // A remainder too small to survive the addition of a full turn must still give 0, never 2pi.
    EXPECT_EQ(normalizeAngle(-1e-20), 0.0);
    EXPECT_LT(normalizeAngle(-1e-17), 2.0 * kPi);
}

TEST(Angles, IncludedAngleGoesCounterClockwiseFromStartToEnd) {
    EXPECT_NEAR(arcIncludedAngle(0.0, kPi / 2.0), kPi / 2.0, kEps);
    EXPECT_NEAR(arcIncludedAngle(kPi / 2.0, 0.0), 3.0 * kPi / 2.0, kEps);
    // Across the zero direction.
    EXPECT_NEAR(arcIncludedAngle(7.0 * kPi / 4.0, kPi / 4.0), kPi / 2.0, kEps);
    EXPECT_NEAR(arcIncludedAngle(-kPi / 4.0, kPi / 4.0), kPi / 2.0, kEps);
    EXPECT_EQ(arcIncludedAngle(1.0, 1.0), 0.0);
    EXPECT_NEAR(angleOf(OdGeVector2d(0.0, -2.0)), 3.0 * kPi / 2.0, kEps);
}

} // namespace
