// Polylines and arcs in a plane that is neither a world plane nor near one: bulge arcs and drawing arcs
// must land on the same circle for the pass to see that one lies on the other.

#include "overkill_polyline_builders.h"
#include "qvad/ge/ocs.h"
#include "tooldeck/commands/cleanup/overkill_polyline_segments.h"
#include "tooldeck/commands/cleanup/overkill_polylines.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace qvtd::overkill::testing {
namespace {

constexpr double kPi = std::numbers::pi;

const OdGeVector3d kTilted(0.3, -0.5, 0.81);

// A point given in the tilted plane's own axes, at height 2 above the origin along its normal.
OdGePoint3d inPlane(double x, double y) {
    return ocsToWcs(OdGePoint3d(x, y, 2.0), kTilted);
}

// A half circle from (0, 0) to (4, 0) bulging to the right, then a straight piece on to (4, 3).
PolylineRecord tiltedPolyline(ObjectKey key) {
    PolylineRecord record;
    record.key = key;
    record.normal = kTilted;
    record.vertices = {{inPlane(0, 0), 1.0}, {inPlane(4, 0), 0.0}, {inPlane(4, 3), 0.0}};
    return record;
}

ArcRecord tiltedArc(ObjectKey key, double radius, double startAngle, double endAngle) {
    ArcRecord record;
    record.key = key;
    record.normal = kTilted;
    record.center = inPlane(2, 0);
    record.radius = radius;
    record.startAngle = startAngle;
    record.endAngle = endAngle;
    return record;
}

TEST(OverkillPolyPlane, ArcSegmentOfATiltedPolylineLiesOnItsOwnCircle) {
    const std::vector<PolylineSegment> segments = polylineSegments(tiltedPolyline(1), 1e-9);
    ASSERT_EQ(segments.size(), 2u);
    const PolylineSegment& half = segments[0];
    ASSERT_TRUE(half.isArc);
    EXPECT_FALSE(segments[1].isArc);
    EXPECT_NEAR(half.radius, 2.0, 1e-12);
    EXPECT_LE(half.center.distanceTo(inPlane(2, 0)), 1e-12);
    // Bulging to the right of the chord from (0, 0) to (4, 0): through (2, -2) of the plane.
    EXPECT_LE(half.middle.distanceTo(inPlane(2, -2)), 1e-12);
    EXPECT_NEAR(half.span, kPi, 1e-12);
    EXPECT_LE((half.normal - kTilted.normal()).length(), 1e-15);
}

TEST(OverkillPolyPlane, TiltedArcsOnTheBulgeAreErasedAndOthersKept) {
    OverkillRun run;
    run.lightweightPolylines = {tiltedPolyline(1)};
    // On the half circle below the chord (angles pi to 2pi of the plane): 11 inside it, 12 the whole
    // of it. 13 is the upper half, 14 a larger circle, 15 the same arc in a plane facing elsewhere.
    run.arcs = {tiltedArc(11, 2.0, 1.2 * kPi, 1.7 * kPi), tiltedArc(12, 2.0, kPi, 2 * kPi),
                tiltedArc(13, 2.0, 0.1 * kPi, 0.9 * kPi), tiltedArc(14, 2.5, 1.2 * kPi, 1.7 * kPi)};
    ArcRecord turned = tiltedArc(15, 2.0, 1.2 * kPi, 1.7 * kPi);
    turned.normal = {0, 0, 1};
    run.arcs.push_back(turned);
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{11, 12}));
}

} // namespace
} // namespace qvtd::overkill::testing
