#include "qvad/ge/point2d.h"
#include "qvad/ge/point3d.h"
#include "qvad/ge/vector3d.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

// Each check puts a pair just inside and just outside the tolerance, so a test that is too strict
// (rejecting the inside pair) and one that is too loose (accepting the outside pair) both fail.
constexpr double kTol = 1e-3;
constexpr double kInside = 0.999e-3;
constexpr double kOutside = 1.001e-3;

TEST(Tolerance, PointsAreEqualUpToTheEqualPointDistanceInEveryDirection) {
    const OdGeTol tol(kTol, 0.0);
    const OdGePoint3d p(10.0, -4.0, 7.0);
    const OdGeVector3d diagonal = OdGeVector3d(1.0, -2.0, 3.0).normal();
    EXPECT_TRUE(p.isEqualTo(p + diagonal * kInside, tol));
    EXPECT_FALSE(p.isEqualTo(p + diagonal * kOutside, tol));
    // The distance, not each coordinate on its own, is what counts.
    EXPECT_FALSE(p.isEqualTo(p + OdGeVector3d(kInside, kInside, 0.0), tol));

    const OdGePoint2d q(3.0, 5.0);
    EXPECT_TRUE(q.isEqualTo(q + OdGeVector2d(0.0, -kInside), tol));
    EXPECT_FALSE(q.isEqualTo(q + OdGeVector2d(0.0, -kOutside), tol));
}

TEST(Tolerance, VectorsUseTheVectorToleranceNotThePointTolerance) {
    const OdGeTol vectorOnly(0.0, kTol);
    const OdGeVector3d v(0.0, 1.0, 0.0);
    EXPECT_TRUE(v.isEqualTo(v + OdGeVector3d(kInside, 0.0, 0.0), vectorOnly));
    EXPECT_FALSE(v.isEqualTo(v + OdGeVector3d(kOutside, 0.0, 0.0), vectorOnly));

    const OdGePoint3d p(1.0, 2.0, 3.0);
    EXPECT_FALSE(p.isEqualTo(p + OdGeVector3d(kInside, 0.0, 0.0), vectorOnly));
}

TEST(Tolerance, DirectionTestsAreBoundedByTheAngle) {
    const OdGeTol tol(kTol);
    const OdGeVector3d along(1.0, 0.0, 0.0);
    // A long vector tilted by a small angle: the test must compare directions, not raw components.
    const OdGeVector3d nearlyAlong = OdGeVector3d(1.0, std::tan(kInside), 0.0) * 1000.0;
    const OdGeVector3d tooFar = OdGeVector3d(1.0, std::tan(kOutside), 0.0) * 1000.0;
    EXPECT_TRUE(along.isParallelTo(nearlyAlong, tol));
    EXPECT_TRUE(along.isParallelTo(-nearlyAlong, tol));
    EXPECT_FALSE(along.isParallelTo(tooFar, tol));
    EXPECT_TRUE(along.isCodirectionalTo(nearlyAlong, tol));
    EXPECT_FALSE(along.isCodirectionalTo(-nearlyAlong, tol));

    const OdGeVector3d nearlyUp = OdGeVector3d(std::tan(kInside), 1.0, 0.0) * 0.001;
    EXPECT_TRUE(along.isPerpendicularTo(nearlyUp, tol));
    EXPECT_FALSE(along.isPerpendicularTo(OdGeVector3d(std::tan(kOutside), 1.0, 0.0), tol));
}

TEST(Tolerance, ZeroVectorsHaveNoDirection) {
    const OdGeVector3d tiny(1e-12, 0.0, 0.0);
    EXPECT_TRUE(tiny.isZeroLength());
    EXPECT_FALSE(tiny.isZeroLength(OdGeTol(1e-13)));
    EXPECT_FALSE(tiny.isParallelTo(OdGeVector3d::kXAxis));
    EXPECT_FALSE(tiny.isPerpendicularTo(OdGeVector3d::kYAxis));
    EXPECT_FALSE(OdGeVector2d(0.0, 0.0).isParallelTo(OdGeVector2d::kXAxis));
    // Normalising must not blow noise up into a direction.
    EXPECT_TRUE(tiny.normal().isEqualTo(tiny, OdGeTol(0.0)));
}

TEST(Tolerance, OperatorsUseTheDefault) {
    EXPECT_TRUE(OdGePoint3d(1.0, 1.0, 1.0) == OdGePoint3d(1.0 + 5e-11, 1.0, 1.0));
    EXPECT_FALSE(OdGePoint3d(1.0, 1.0, 1.0) == OdGePoint3d(1.0 + 5e-10, 1.0, 1.0));
    EXPECT_TRUE(OdGeVector3d(0.0, 1.0, 0.0) != OdGeVector3d(0.0, 1.0, 5e-10));
}

} // namespace
