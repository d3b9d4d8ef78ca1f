#include "qvad/ge/matrix3d.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
const OdGeTol kTight(1e-9);

// A transformation with every kind of part, placed off the origin so that a mistake in any translation
// column or in the order of composition shows.
OdGeMatrix3d composedTransform() {
    return OdGeMatrix3d::translation(OdGeVector3d(10.0, -20.0, 5.0)) *
           OdGeMatrix3d::rotation(0.7, OdGeVector3d(1.0, 2.0, 2.0), OdGePoint3d(3.0, 4.0, -1.0)) *
           OdGeMatrix3d::scaling(2.5, OdGePoint3d(-2.0, 1.0, 0.0)) *
           OdGeMatrix3d::mirroring(OdGePoint3d(0.0, 0.0, 4.0), OdGeVector3d(0.0, 1.0, 1.0));
}

TEST(Matrix3d, InverseUndoesAComposedTransform) {
    const OdGeMatrix3d m = composedTransform();
    OdGeMatrix3d inv;
    ASSERT_TRUE(m.inverse(inv));
    EXPECT_TRUE((m * inv).isEqualTo(OdGeMatrix3d::kIdentity, kTight));
    EXPECT_TRUE((inv * m).isEqualTo(OdGeMatrix3d::kIdentity, kTight));

    const OdGePoint3d p(7.0, -3.0, 2.0);
    EXPECT_TRUE((inv * (m * p)).isEqualTo(p, kTight));
    EXPECT_TRUE(m.inverse().isEqualTo(inv));
}

TEST(Matrix3d, CompositionAppliesTheRightFactorFirst) {
    const OdGeMatrix3d move = OdGeMatrix3d::translation(OdGeVector3d(1.0, 0.0, 0.0));
    const OdGeMatrix3d turn = OdGeMatrix3d::rotation(kPi / 2.0, OdGeVector3d::kZAxis);
    const OdGePoint3d p = OdGePoint3d::kOrigin;
    EXPECT_TRUE(((turn * move) * p).isEqualTo(OdGePoint3d(0.0, 1.0, 0.0), kTight));
    EXPECT_TRUE(((move * turn) * p).isEqualTo(OdGePoint3d(1.0, 0.0, 0.0), kTight));

    OdGeMatrix3d pre = move;
    pre.preMultBy(turn);
    EXPECT_TRUE(pre.isEqualTo(turn * move));
    OdGeMatrix3d post = move;
    post.postMultBy(turn);
    EXPECT_TRUE(post.isEqualTo(move * turn));
}

TEST(Matrix3d, RotationAboutAnOffsetAxisKeepsTheAxisFixed) {
    const OdGePoint3d center(2.0, 3.0, 4.0);
    const OdGeVector3d axis(0.0, 0.0, 2.0);
    const OdGeMatrix3d m = OdGeMatrix3d::rotation(kPi / 2.0, axis, center);
    EXPECT_TRUE((m * center).isEqualTo(center, kTight));
    EXPECT_TRUE((m * (center + axis * 3.0)).isEqualTo(center + axis * 3.0, kTight));
    EXPECT_TRUE((m * OdGePoint3d(3.0, 3.0, 9.0)).isEqualTo(OdGePoint3d(2.0, 4.0, 9.0), kTight));
    EXPECT_NEAR(m.det(), 1.0, 1e-12);
}

TEST(Matrix3d, ScalingAboutAPointKeepsThatPoint) {
    const OdGePoint3d center(1.0, -1.0, 2.0);
    const OdGeMatrix3d m = OdGeMatrix3d::scaling(3.0, center);
    EXPECT_TRUE((m * center).isEqualTo(center));
    EXPECT_TRUE((m * OdGePoint3d(2.0, -1.0, 2.0)).isEqualTo(OdGePoint3d(4.0, -1.0, 2.0)));
    EXPECT_NEAR(m.det(), 27.0, 1e-12);
}

TEST(Matrix3d, MirroringReflectsAcrossThePlane) {
    const OdGePoint3d onPlane(0.0, 2.0, 0.0);
    const OdGeMatrix3d m = OdGeMatrix3d::mirroring(onPlane, OdGeVector3d(0.0, 5.0, 0.0));
    EXPECT_TRUE((m * OdGePoint3d(4.0, 3.0, 1.0)).isEqualTo(OdGePoint3d(4.0, 1.0, 1.0), kTight));
    EXPECT_TRUE((m * OdGePoint3d(-1.0, 2.0, 7.0)).isEqualTo(OdGePoint3d(-1.0, 2.0, 7.0), kTight));
    EXPECT_NEAR(m.det(), -1.0, 1e-12);
    EXPECT_TRUE((m * m).isEqualTo(OdGeMatrix3d::kIdentity, kTight));
}

TEST(Matrix3d, VectorsIgnoreTheTranslation) {
    const OdGeMatrix3d m = composedTransform();
    const OdGePoint3d a(1.0, 2.0, 3.0), b(-4.0, 0.5, 6.0);
    EXPECT_TRUE((m * (b - a)).isEqualTo((m * b) - (m * a), kTight));

    OdGeVector3d v(1.0, 0.0, 0.0);
    v.transformBy(OdGeMatrix3d::translation(OdGeVector3d(5.0, 5.0, 5.0)));
    EXPECT_TRUE(v.isEqualTo(OdGeVector3d::kXAxis));
    OdGePoint3d p = a;
    p.transformBy(m);
    EXPECT_TRUE(p.isEqualTo(m * a));
}

TEST(Matrix3d, CoordinateSystemRoundTrips) {
    const OdGePoint3d origin(5.0, 6.0, 7.0);
    const OdGeVector3d x(0.0, 1.0, 0.0), y(-1.0, 0.0, 0.0), z(0.0, 0.0, 1.0);
    OdGeMatrix3d m;
    m.setCoordSystem(origin, x, y, z);
    EXPECT_TRUE((m * OdGePoint3d(2.0, 3.0, 4.0)).isEqualTo(origin + x * 2.0 + y * 3.0 + z * 4.0));

    OdGePoint3d o;
    OdGeVector3d gx, gy, gz;
    m.getCoordSystem(o, gx, gy, gz);
    EXPECT_TRUE(o.isEqualTo(origin));
    EXPECT_TRUE(gx.isEqualTo(x) && gy.isEqualTo(y) && gz.isEqualTo(z));
}

TEST(Matrix3d, SingularMatricesAreRefusedButTinyScalesAreNot) {
    OdGeMatrix3d flat;
    flat.setCoordSystem(OdGePoint3d(1.0, 2.0, 3.0), OdGeVector3d::kXAxis, OdGeVector3d::kYAxis,
                        OdGeVector3d(1.0, 1.0, 0.0));
    EXPECT_TRUE(flat.isSingular());
    OdGeMatrix3d untouched = OdGeMatrix3d::translation(OdGeVector3d(9.0, 9.0, 9.0));
    EXPECT_FALSE(flat.inverse(untouched));
    EXPECT_TRUE(untouched.isEqualTo(OdGeMatrix3d::translation(OdGeVector3d(9.0, 9.0, 9.0))));

    const OdGeMatrix3d collapsed = OdGeMatrix3d::scaling(0.0);
    EXPECT_TRUE(collapsed.isSingular());
    EXPECT_FALSE(collapsed.inverse(untouched));

    // A drawing in tiny units has a tiny determinant but is perfectly invertible.
    const OdGeMatrix3d tiny = OdGeMatrix3d::scaling(1e-5, OdGePoint3d(3.0, 3.0, 3.0));
    EXPECT_FALSE(tiny.isSingular());
    OdGeMatrix3d tinyInverse;
    ASSERT_TRUE(tiny.inverse(tinyInverse));
    EXPECT_TRUE(
        (tinyInverse * (tiny * OdGePoint3d(8.0, -2.0, 1.0))).isEqualTo(OdGePoint3d(8.0, -2.0, 1.0), kTight));
}

} // namespace
