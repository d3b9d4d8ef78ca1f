#include "qvad/ge/angle.h"
#include "qvad/ge/bulge.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kEps = 1e-9;
const OdGeTol kTight(kEps);

TEST(Bulge, OneIsACounterClockwiseHalfCircle) {
    const OdGePoint2d start(1.0, 0.0), end(-1.0, 0.0);
    const auto arc = arcFromBulge(start, end, 1.0);
    ASSERT_TRUE(arc);
    EXPECT_TRUE(arc->center.isEqualTo(OdGePoint2d(0.0, 0.0), kTight));
    EXPECT_NEAR(arc->radius, 1.0, kEps);
    EXPECT_NEAR(arc->startAngle, 0.0, kEps);
    EXPECT_NEAR(arc->endAngle, kPi, kEps);
    EXPECT_TRUE(arc->counterClockwise);
    EXPECT_NEAR(arc->length(), kPi, kEps);
    // Counter-clockwise from east to west passes through north.
    EXPECT_TRUE(arc->midPoint().isEqualTo(OdGePoint2d(0.0, 1.0), kTight));
}

TEST(Bulge, MinusOneGoesTheOtherWayRound) {
    const auto arc = arcFromBulge(OdGePoint2d(1.0, 0.0), OdGePoint2d(-1.0, 0.0), -1.0);
    ASSERT_TRUE(arc);
    EXPECT_FALSE(arc->counterClockwise);
    EXPECT_NEAR(arc->sweep(), -kPi, kEps);
    EXPECT_TRUE(arc->midPoint().isEqualTo(OdGePoint2d(0.0, -1.0), kTight));
}

TEST(Bulge, QuarterCircleHasCentreOnTheInsideOfTheTurn) {
    // tan(pi/8) is the bulge of a quarter circle; from (2,0) to (0,2) counter-clockwise the centre is the
    // origin, and with the opposite sign it is (2,2).
    const double quarter = std::tan(kPi / 8.0);
    const OdGePoint2d start(2.0, 0.0), end(0.0, 2.0);
    const auto left = arcFromBulge(start, end, quarter);
    const auto right = arcFromBulge(start, end, -quarter);
    ASSERT_TRUE(left && right);
    EXPECT_TRUE(left->center.isEqualTo(OdGePoint2d(0.0, 0.0), kTight));
    EXPECT_TRUE(right->center.isEqualTo(OdGePoint2d(2.0, 2.0), kTight));
    EXPECT_NEAR(left->radius, 2.0, kEps);
    EXPECT_NEAR(right->radius, 2.0, kEps);
    EXPECT_NEAR(left->length(), kPi, kEps);
    EXPECT_NEAR(right->sweep(), -kPi / 2.0, kEps);
}

TEST(Bulge, MajorArcBulgesBeyondTheHalfCircle) {
    // Three quarters of a circle: bulge tan(3pi/8) > 1 puts the centre on the far side of the chord.
    const auto arc = arcFromBulge(OdGePoint2d(1.0, 0.0), OdGePoint2d(0.0, -1.0), std::tan(3.0 * kPi / 8.0));
    ASSERT_TRUE(arc);
    EXPECT_TRUE(arc->center.isEqualTo(OdGePoint2d(0.0, 0.0), kTight));
    EXPECT_NEAR(arc->sweep(), 3.0 * kPi / 2.0, kEps);
    EXPECT_NEAR(arc->length(), 3.0 * kPi / 2.0, kEps);
    EXPECT_TRUE(arc->midPoint().isEqualTo(OdGePoint2d(-std::sqrt(0.5), std::sqrt(0.5)), kTight));
}

TEST(Bulge, StraightOrDegenerateSegmentsHaveNoArc) {
    EXPECT_FALSE(arcFromBulge(OdGePoint2d(0.0, 0.0), OdGePoint2d(5.0, 0.0), 0.0));
    EXPECT_FALSE(arcFromBulge(OdGePoint2d(0.0, 0.0), OdGePoint2d(5.0, 0.0), 1e-14));
    EXPECT_FALSE(arcFromBulge(OdGePoint2d(3.0, 3.0), OdGePoint2d(3.0, 3.0), 0.5));
    EXPECT_FALSE(arcFromBulge(OdGePoint2d(0.0, 0.0), OdGePoint2d(5.0, 0.0), std::nan("")));
    EXPECT_EQ(bulgeFromArc(1.0, 1.0, true), 0.0);
}

// Chords pointing into every quadrant and bulges of both signs, small and large: the arc must pass
// through both end points, keep the turn 4 atan(bulge), and give the bulge back.
TEST(Bulge, ArcRoundTripOverQuadrantsAndSigns) {
    const double bulges[] = {0.01, 0.3, 1.0, 2.5, 40.0, -0.01, -0.3, -1.0, -2.5, -40.0};
    const OdGePoint2d start(-3.0, 7.0);
    for (int degrees = 10; degrees < 360; degrees += 45) {
        const double direction = degrees * kPi / 180.0;
        const OdGePoint2d end = start + OdGeVector2d(std::cos(direction), std::sin(direction)) * 4.0;
        for (const double bulge : bulges) {
            SCOPED_TRACE(testing::Message() << "chord at " << degrees << " degrees, bulge " << bulge);
            const auto arc = arcFromBulge(start, end, bulge);
            ASSERT_TRUE(arc);
            EXPECT_TRUE(arc->startPoint().isEqualTo(start, kTight));
            EXPECT_TRUE(arc->endPoint().isEqualTo(end, kTight));
            EXPECT_NEAR(arc->sweep(), 4.0 * std::atan(bulge), kEps);
            EXPECT_NEAR(arc->center.distanceTo(start), arc->radius, kEps * arc->radius);
            EXPECT_NEAR(bulgeFromArc(*arc), bulge, kEps * std::max(1.0, bulge * bulge));
            EXPECT_NEAR(bulgeFromArc(arc->startAngle, arc->endAngle, arc->counterClockwise), bulge,
                        kEps * std::max(1.0, bulge * bulge));

            // The sagitta: the midpoint lies bulge * chord / 2 off the chord, on the right of its
            // direction for a positive bulge.
            const OdGeVector2d chord = end - start;
            const OdGeVector2d offset = arc->midPoint() - (start + chord / 2.0);
            EXPECT_NEAR(chord.crossProduct(offset) / chord.length(), -bulge * chord.length() / 2.0,
                        kEps * 100.0);
        }
    }
}

TEST(Bulge, FromArcAnglesOfEitherDirection) {
    // A counter-clockwise quarter from 350 to 80 degrees crosses the zero direction.
    const double a350 = 350.0 * kPi / 180.0, a80 = 80.0 * kPi / 180.0;
    EXPECT_NEAR(bulgeFromArc(a350, a80, true), std::tan(kPi / 8.0), kEps);
    // Clockwise from 80 back to 350 is the same quarter, run the other way.
    EXPECT_NEAR(bulgeFromArc(a80, a350, false), -std::tan(kPi / 8.0), kEps);
    // Clockwise from 350 to 80 is the long way round.
    EXPECT_NEAR(bulgeFromArc(a350, a80, false), -std::tan(3.0 * kPi / 8.0), kEps);
}

} // namespace
