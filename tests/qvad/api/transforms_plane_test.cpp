// Distances, directions, polar points and line crossings.

#include "qvad/api/qvad_api.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

TEST(PlaneGeometry, DistanceIsThreeDimensionalAndAngleLiesInThePlane) {
    const qv_real a[3] = {1, 2, 3}, b[3] = {4, 6, 15};
    EXPECT_DOUBLE_EQ(qvutDistance(a, b), 13.0);
    EXPECT_DOUBLE_EQ(qvutAngle(a, b), std::atan2(4.0, 3.0)); // height ignored
    const qv_real left[3] = {0, 0, 0}, down[3] = {0, -1, 0};
    EXPECT_DOUBLE_EQ(qvutAngle(left, down), 1.5 * M_PI); // always within one turn
    EXPECT_EQ(qvutDistance(nullptr, b), 0.0);
}

TEST(PlaneGeometry, PolarKeepsTheHeightAndRefusesNonsense) {
    const qv_real base[3] = {1, 1, 5};
    qv_point result;
    ASSERT_EQ(qvutPolar(base, M_PI / 2, 3.0, result), QV_NORM);
    EXPECT_NEAR(result[0], 1.0, 1e-12);
    EXPECT_NEAR(result[1], 4.0, 1e-12);
    EXPECT_EQ(result[2], 5.0);
    EXPECT_NEAR(qvutAngle(base, result), M_PI / 2, 1e-12);
    EXPECT_NEAR(qvutDistance(base, result), 3.0, 1e-12);
    EXPECT_EQ(qvutPolar(base, NAN, 1.0, result), QV_ERROR);
    EXPECT_EQ(qvutPolar(nullptr, 0.0, 1.0, result), QV_ERROR);
}

TEST(PlaneGeometry, CrossingOfSegmentsAndOfTheirLines) {
    const qv_real a1[3] = {0, 0, 0}, a2[3] = {4, 4, 0}, b1[3] = {0, 4, 0}, b2[3] = {4, 0, 0};
    qv_point result;
    ASSERT_EQ(qvdbInters(a1, a2, b1, b2, 1, result), QV_NORM);
    EXPECT_NEAR(result[0], 2.0, 1e-12);
    EXPECT_NEAR(result[1], 2.0, 1e-12);

    // Lines meet beyond the end of one segment: only without the on-segment test.
    const qv_real c1[3] = {10, 0, 0}, c2[3] = {10, 1, 0};
    EXPECT_EQ(qvdbInters(a1, a2, c1, c2, 1, result), QV_ERROR);
    ASSERT_EQ(qvdbInters(a1, a2, c1, c2, 0, result), QV_NORM);
    EXPECT_NEAR(result[0], 10.0, 1e-12);
    EXPECT_NEAR(result[1], 10.0, 1e-12);

    // Segments touching at an end point count as crossing.
    const qv_real d1[3] = {4, 4, 0}, d2[3] = {8, 0, 0};
    ASSERT_EQ(qvdbInters(a1, a2, d1, d2, 1, result), QV_NORM);
    EXPECT_NEAR(result[0], 4.0, 1e-12);
}

TEST(PlaneGeometry, CrossingInSpace) {
    const qv_real a1[3] = {0, 0, 0}, a2[3] = {2, 2, 2}, b1[3] = {2, 0, 0}, b2[3] = {0, 2, 2};
    qv_point result;
    ASSERT_EQ(qvdbInters(a1, a2, b1, b2, 1, result), QV_NORM);
    for (double c : result) EXPECT_NEAR(c, 1.0, 1e-12);
    const qv_real skew1[3] = {2, 0, 1}, skew2[3] = {0, 2, 1};
    EXPECT_EQ(qvdbInters(a1, b1, skew1, skew2, 0, result), QV_ERROR); // one line lies above the other
}

TEST(PlaneGeometry, ParallelAndDegenerateLinesHaveNoCrossing) {
    const qv_real a1[3] = {0, 0, 0}, a2[3] = {1, 1, 0}, b1[3] = {0, 1, 0}, b2[3] = {1, 2, 0};
    qv_point result = {9, 9, 9};
    EXPECT_EQ(qvdbInters(a1, a2, b1, b2, 0, result), QV_ERROR);
    EXPECT_EQ(qvdbInters(a1, a2, a1, a2, 0, result), QV_ERROR); // the same line
    EXPECT_EQ(qvdbInters(a1, a1, b1, b2, 0, result), QV_ERROR); // a point is no line
    const qv_real bad[3] = {INFINITY, 0, 0};
    EXPECT_EQ(qvdbInters(bad, a2, b1, b2, 0, result), QV_ERROR);
    EXPECT_EQ(qvdbInters(a1, a2, b1, nullptr, 0, result), QV_ERROR);
    EXPECT_EQ(result[0], 9.0);
}

} // namespace
