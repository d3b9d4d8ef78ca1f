#include "qvad/ge/extents3d.h"
#include "qvad/ge/matrix3d.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

TEST(Extents3d, GrowsAroundPointsAndBoxesButNotEmptyOnes) {
    OdGeExtents3d ext;
    EXPECT_FALSE(ext.isValid());
    EXPECT_FALSE(ext.contains(OdGePoint3d::kOrigin));

    ext.addPoint(OdGePoint3d(1.0, 2.0, 3.0)).addPoint(OdGePoint3d(-1.0, 5.0, 0.0));
    EXPECT_TRUE(ext.isValid());
    EXPECT_TRUE(ext.minPoint().isEqualTo(OdGePoint3d(-1.0, 2.0, 0.0)));
    EXPECT_TRUE(ext.maxPoint().isEqualTo(OdGePoint3d(1.0, 5.0, 3.0)));
    EXPECT_TRUE(ext.center().isEqualTo(OdGePoint3d(0.0, 3.5, 1.5)));

    ext.addExt(OdGeExtents3d());
    EXPECT_TRUE(ext.minPoint().isEqualTo(OdGePoint3d(-1.0, 2.0, 0.0)));
    // Corners given in either order span the same box.
    ext.addExt(OdGeExtents3d(OdGePoint3d(6.0, 1.0, 1.0), OdGePoint3d(5.0, -1.0, 1.0)));
    EXPECT_TRUE(ext.minPoint().isEqualTo(OdGePoint3d(-1.0, -1.0, 0.0)));
    EXPECT_TRUE(ext.maxPoint().isEqualTo(OdGePoint3d(6.0, 5.0, 3.0)));

    ext.reset();
    EXPECT_FALSE(ext.isValid());
}

TEST(Extents3d, ContainmentIncludesTheBoundaryAndTolerance) {
    const OdGeExtents3d box(OdGePoint3d(0.0, 0.0, 0.0), OdGePoint3d(10.0, 10.0, 10.0));
    const OdGeTol tol(0.01);
    EXPECT_TRUE(box.contains(OdGePoint3d(10.0, 5.0, 0.0), OdGeTol(0.0)));
    // Just within and just beyond the tolerance past every face.
    for (int axis = 0; axis < 3; ++axis) {
        for (const double face : {0.0, 10.0}) {
            const double outwards = face == 0.0 ? -1.0 : 1.0;
            double within[3] = {5.0, 5.0, 5.0}, beyond[3] = {5.0, 5.0, 5.0};
            within[axis] = face + outwards * 0.009;
            beyond[axis] = face + outwards * 0.011;
            SCOPED_TRACE(testing::Message() << "axis " << axis << ", face " << face);
            EXPECT_TRUE(box.contains(OdGePoint3d(within[0], within[1], within[2]), tol));
            EXPECT_FALSE(box.contains(OdGePoint3d(beyond[0], beyond[1], beyond[2]), tol));
        }
    }
    EXPECT_TRUE(box.contains(OdGeExtents3d(OdGePoint3d(1.0, 1.0, 1.0), OdGePoint3d(9.0, 9.0, 9.0))));
    EXPECT_FALSE(box.contains(OdGeExtents3d(OdGePoint3d(1.0, 1.0, 1.0), OdGePoint3d(11.0, 9.0, 9.0))));
    EXPECT_FALSE(box.contains(OdGeExtents3d()));
}

OdGeExtents3d boxFrom(double x0, double y0, double z0, double x1, double y1, double z1) {
    return {OdGePoint3d(x0, y0, z0), OdGePoint3d(x1, y1, z1)};
}

TEST(Extents3d, IntersectionCountsTouchingAndNeedsOverlapOnEveryAxis) {
    const OdGeExtents3d box = boxFrom(0.0, 0.0, 0.0, 1.0, 1.0, 1.0);
    const OdGeTol exact(0.0);
    EXPECT_TRUE(box.intersects(boxFrom(1.0, 0.5, 0.5, 2.0, 2.0, 2.0), exact));
    EXPECT_FALSE(box.intersects(boxFrom(1.1, 0.5, 0.5, 2.0, 2.0, 2.0), exact));
    EXPECT_TRUE(box.intersects(boxFrom(1.1, 0.5, 0.5, 2.0, 2.0, 2.0), OdGeTol(0.2)));
    EXPECT_TRUE(box.intersects(boxFrom(0.2, 0.2, 0.2, 0.8, 0.8, 0.8), exact));
    // Apart along one axis only, on either side of it: no axis may be skipped.
    for (int axis = 0; axis < 3; ++axis) {
        for (const double side : {-3.0, 3.0}) {
            double low[3] = {0.2, 0.2, 0.2}, high[3] = {0.8, 0.8, 0.8};
            low[axis] += side;
            high[axis] += side;
            SCOPED_TRACE(testing::Message() << "axis " << axis << ", side " << side);
            EXPECT_FALSE(box.intersects(boxFrom(low[0], low[1], low[2], high[0], high[1], high[2]), exact));
        }
    }
    EXPECT_FALSE(box.intersects(OdGeExtents3d()));
    EXPECT_FALSE(OdGeExtents3d().intersects(box));
}

TEST(Extents3d, TransformedBoxEnclosesEveryTransformedCorner) {
    // An eighth turn about x mixes y and z, so every one of the eight corners matters:
    // y' = (y - z) / sqrt 2 and z' = (y + z) / sqrt 2.
    OdGeExtents3d box(OdGePoint3d(0.0, 0.0, 0.0), OdGePoint3d(2.0, 1.0, 3.0));
    box.transformBy(OdGeMatrix3d::rotation(std::numbers::pi / 4.0, OdGeVector3d::kXAxis));
    const double r = std::sqrt(0.5);
    const OdGeTol tol(1e-12);
    EXPECT_TRUE(box.minPoint().isEqualTo(OdGePoint3d(0.0, -3.0 * r, 0.0), tol));
    EXPECT_TRUE(box.maxPoint().isEqualTo(OdGePoint3d(2.0, r, 4.0 * r), tol));

    // The same about z mixes x and y: x' = (x - y) / sqrt 2 and y' = (x + y) / sqrt 2.
    OdGeExtents3d flat = boxFrom(0.0, 0.0, 0.0, 2.0, 1.0, 3.0);
    flat.transformBy(OdGeMatrix3d::rotation(std::numbers::pi / 4.0, OdGeVector3d::kZAxis));
    EXPECT_TRUE(flat.minPoint().isEqualTo(OdGePoint3d(-r, 0.0, 0.0), tol));
    EXPECT_TRUE(flat.maxPoint().isEqualTo(OdGePoint3d(2.0 * r, 3.0 * r, 3.0), tol));
}

} // namespace
