#include "overkill_polyline_builders.h"
#include "tooldeck/commands/cleanup/overkill_polyline_segments.h"
#include "tooldeck/commands/cleanup/overkill_polylines.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace qvtd::overkill::testing {
namespace {

constexpr double kPi = std::numbers::pi;

using Corners = std::vector<std::vector<double>>;

OverkillRun lightweightRun(std::vector<PolylineRecord> polylines) {
    OverkillRun run;
    run.lightweightPolylines = std::move(polylines);
    return run;
}

TEST(OverkillPolyRules, SamePolylineForwardOrReversedIsErased) {
    // An L with an arc at its end: the copy, and the copy drawn backwards with its bulge negated, go.
    OverkillRun run = lightweightRun({
        polyline(1, {{0, 0}, {10, 0, 0.5}, {10, 5}}),
        polyline(2, {{0, 0}, {10, 0, 0.5}, {10, 5}}),
        polyline(3, {{10, 5, -0.5}, {10, 0}, {0, 0}}),
        // Backwards but with the bulge kept: its arc bends the other way, so only its straight end lies
        // on the reference and is trimmed off.
        polyline(4, {{10, 5, 0.5}, {10, 0}, {0, 0}}),
    });
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{2, 3}));
    EXPECT_EQ(run.edits.erasedTally, 2);
    ASSERT_EQ(run.edits.changedPolylines.size(), 1u);
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(4)), (Corners{{10, 5, 0.5}, {10, 0, 0}}));
    EXPECT_TRUE(run.lightweightPolylines.empty());
}

TEST(OverkillPolyRules, ClosedPolylineFromAnotherStartVertexIsErased) {
    OverkillRun run = lightweightRun({
        polyline(1, {{0, 0}, {4, 0, 1}, {4, 4}, {0, 4}}, true),
        polyline(2, {{4, 4}, {0, 4}, {0, 0}, {4, 0, 1}}, true),
        polyline(3, {{4, 0}, {0, 0}, {0, 4}, {4, 4, -1}}, true), // reversed, starting elsewhere
        polyline(4, {{0, 0}, {4, 0, -1}, {4, 4}, {0, 4}}, true), // the arc bulges inwards
        polyline(5, {{0, 0}, {4, 0, 1}, {4, 4}, {0, 4.1}}, true),
    });
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{2, 3}));
}

TEST(OverkillPolyRules, WidthsMustAgreeForTheSamePolyline) {
    PolylineRecord wide = polyline(1, {{0, 0}, {10, 0}});
    wide.vertices[0].startWidth = 1.0;
    wide.vertices[0].endWidth = 2.0;
    PolylineRecord reversedWide = polyline(2, {{10, 0}, {0, 0}});
    reversedWide.vertices[0].startWidth = 2.0;
    reversedWide.vertices[0].endWidth = 1.0;
    PolylineRecord sameWayWide = polyline(3, {{10, 0}, {0, 0}});
    sameWayWide.vertices[0].startWidth = 1.0;
    sameWayWide.vertices[0].endWidth = 2.0;
    PolylineRecord thinner = polyline(4, {{0, 0}, {10, 0}});
    thinner.constantWidth = 0.5;
    OverkillRun run = lightweightRun({wide, reversedWide, sameWayWide, thinner});
    runPolylinePasses(run);
    // The tapered copy drawn the other way is the same; tapered the wrong way round, or with another
    // constant width, it draws differently and stays.
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{2}));
}

TEST(OverkillPolyRules, PolylineLyingOnAnotherIsErased) {
    OverkillRun run = lightweightRun({
        polyline(1, {{0, 0}, {10, 0}, {10, 10}, {20, 10, 1}, {30, 10}}),
        polyline(2, {{2, 0}, {8, 0}}),
        polyline(3, {{10, 2}, {10, 8}, {10, 9}}),
        // A quarter of the half circle from (20,10) to (30,10) about (25,10), both ways round.
        polyline(4, {{25, 5, std::tan(kPi / 8)}, {30, 10}}),
        polyline(7, {{30, 10, -std::tan(kPi / 8)}, {25, 5}}),
        // The same circle, but the half the reference does not draw.
        polyline(5, {{20, 10, -1}, {30, 10}}),
        polyline(6, {{2, 0}, {8, 0.01}}),
    });
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{2, 3, 4, 7}));
}

TEST(OverkillPolyRules, CoveredEndSegmentsAreTrimmedMiddleOnesStay) {
    const std::vector<PolylineRecord> polylines = {
        polyline(1, {{0, 0}, {10, 0}}),
        polyline(2, {{2, 0}, {8, 0}, {8, 5}, {12, 5}}),
        polyline(3, {{5, 7}, {5, 3}, {3, 0}, {6, 0}}),
        polyline(4, {{3, 5}, {3, 0}, {7, 0}, {7, 5}}),
        polyline(5, {{1, 0}, {4, 0}, {4, 4}, {9, 0}, {10, 0}}),
        polyline(6, {{1, 0}, {4, 0}, {4, 4}, {9, 0}, {10, 0}}, true),
    };
    OverkillRun run = lightweightRun(polylines);
    runPolylinePasses(run);
    EXPECT_TRUE(run.edits.erased.empty());
    ASSERT_EQ(run.edits.changedPolylines.size(), 3u);
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(2)), (Corners{{8, 0, 0}, {8, 5, 0}, {12, 5, 0}}));
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(3)), (Corners{{5, 7, 0}, {5, 3, 0}, {3, 0, 0}}));
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(5)), (Corners{{4, 0, 0}, {4, 4, 0}, {9, 0, 0}}));

    OverkillRun apart = lightweightRun(polylines);
    apart.settings.combineOverlapping = false;
    runPolylinePasses(apart);
    EXPECT_TRUE(apart.edits.changedPolylines.empty());
    EXPECT_TRUE(apart.edits.erased.empty());
}

TEST(OverkillPolyRules, TrimmedPolylineMeetsLaterReferencesInItsNewShape) {
    // 1 trims 3 down to its vertical leg, which 2 then covers whole.
    OverkillRun run = lightweightRun({
        polyline(1, {{0, 0}, {10, 0}}),
        polyline(2, {{10, 0}, {10, 10}}),
        polyline(3, {{0, 0}, {10, 0}, {10, 5}}),
    });
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{3}));
    EXPECT_TRUE(run.edits.changedPolylines.empty());
}

TEST(OverkillPolyRules, ZeroLengthSegmentsAreDroppedAndEmptyPolylinesErased) {
    OverkillRun run = lightweightRun({
        polyline(1, {{0, 0}, {0, 0, 0.25}, {5, 0}, {5, 1e-9}, {5, 5}}),
        polyline(2, {{1, 1}, {1, 1}, {1, 1 + 1e-8}}),
        polyline(3, {{20, 0}, {30, 0}, {30, 10}, {20, 0}}, true),
        polyline(4, {{40, 0}}),
        polyline(5, {{50, 0}, {60, 0}}),
    });
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{2, 4}));
    EXPECT_EQ(run.edits.erasedTally, 2);
    ASSERT_EQ(run.edits.changedPolylines.size(), 2u);
    // The kept vertex carries on with the bulge of the segment that left the dropped one.
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(1)), (Corners{{0, 0, 0.25}, {5, 0, 0}, {5, 5, 0}}));
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(3)), (Corners{{20, 0, 0}, {30, 0, 0}, {30, 10, 0}}));
}

TEST(OverkillPolyRules, SegmentsAfterADroppedVertexAreTheRebuiltOnes) {
    // Without its repeated first vertex the polyline runs 0-10-20; its last segment must still be there
    // to cover the line from 12 to 18.
    OverkillRun run = lightweightRun({polyline(1, {{0, 0}, {0, 0}, {10, 0}, {20, 0}})});
    run.lines = {line(11, 12, 0, 18, 0)};
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{11}));
    ASSERT_EQ(run.edits.changedPolylines.size(), 1u);
    EXPECT_EQ(cornersOf(run.edits.changedPolylines.at(1)), (Corners{{0, 0, 0}, {10, 0, 0}, {20, 0, 0}}));
}

TEST(OverkillPolyRules, LinesAndArcsLyingOnSegmentsAreErased) {
    OverkillRun run = lightweightRun({polyline(1, {{0, 0}, {10, 0, 1}, {20, 0}})});
    Properties otherLayer;
    otherLayer.layer = 7;
    run.lines = {line(11, 2, 0, 5, 0), line(12, 10, 0, 0, 0), line(13, 8, 0, 12, 0), line(14, 1, 0, 3, 0)};
    run.lines[3].props = otherLayer;
    // The bulge-1 segment is the half circle about (15,0) below the x axis (counter-clockwise).
    run.arcs = {arc(21, 15, 0, 5, 1.25 * kPi, 1.75 * kPi), arc(22, 15, 0, 5, 1.5 * kPi, 0.25 * kPi),
                arc(23, 15, 0, 5.1, 1.25 * kPi, 1.75 * kPi), arc(24, 15, 0, 5, 1.1 * kPi, 1.9 * kPi)};
    run.arcs[3].thickness = 2.0;
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{11, 12, 21}));
    EXPECT_EQ(run.edits.erasedTally, 3);
    EXPECT_TRUE(run.lines.empty());
    EXPECT_TRUE(run.arcs.empty());
}

TEST(OverkillPolyRules, ArcRunningRoundThroughTheGapIsNotOnTheSegment) {
    // A 300 degree arc segment from angle 0 to 300 about the origin.
    const double span = 300.0 * kPi / 180.0;
    OverkillRun run =
        lightweightRun({polyline(1, {{5, 0, std::tan(span / 4)}, {5 * std::cos(span), 5 * std::sin(span)}})});
    const double degree = kPi / 180.0;
    // From 280 to 120 degrees counter-clockwise: both ends and its middle (20) lie on the segment, yet
    // it crosses the gap between 300 and 360.
    run.arcs = {arc(21, 0, 0, 5, 280 * degree, 120 * degree), arc(22, 0, 0, 5, 10 * degree, 290 * degree)};
    runPolylinePasses(run);
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{22}));
}

TEST(OverkillPolyRules, EachKindMeetsOnlyWhatThePassOrderLeaves) {
    OverkillRun run;
    run.twoDPolylines = {polyline(1, {{0, 0}, {10, 0, 1}, {20, 0}}, false, PolylineKind::TwoD),
                         polyline(2, {{0, 0}, {10, 0, 1}, {20, 0}}, false, PolylineKind::TwoD)};
    run.threeDPolylines = {polyline(3, {{0, 0}, {10, 0, 1}, {20, 0}}, false, PolylineKind::ThreeD),
                           polyline(4, {{20, 0}, {10, 0}}, false, PolylineKind::ThreeD)};
    run.threeDPolylines[0].vertices[2].point.z = 4.0;
    run.threeDPolylines[1].vertices[0].point.z = 4.0;
    run.lines = {line(11, 2, 0, 5, 0)};
    run.arcs = {arc(21, 15, 0, 5, 1.25 * kPi, 1.75 * kPi)};
    runPolylinePasses(run);
    // The line list is gone before 2D polylines; 3D polylines are straight and meet each other only.
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{2, 21, 4}));
    EXPECT_TRUE(run.lines.empty());
    EXPECT_TRUE(run.arcs.empty());
    EXPECT_TRUE(run.twoDPolylines.empty());
    EXPECT_TRUE(run.threeDPolylines.empty());
}

TEST(OverkillPolyRules, PropertiesNormalsAndThicknessMustAgree) {
    PolylineRecord red = polyline(1, {{0, 0}, {10, 0}});
    red.props.colorIndex = 1;
    PolylineRecord blue = polyline(2, {{0, 0}, {10, 0}});
    blue.props.colorIndex = 5;
    PolylineRecord thick = polyline(3, {{0, 0}, {10, 0}});
    thick.props.colorIndex = 1;
    thick.thickness = 1.0;
    PolylineRecord upsideDown = polyline(4, {{0, 0}, {10, 0}});
    upsideDown.props.colorIndex = 1;
    upsideDown.normal = {0, 0, -1};
    PolylineRecord tilted = polyline(5, {{0, 0}, {10, 0}});
    tilted.props.colorIndex = 1;
    tilted.normal = {0, 1, 1};

    OverkillRun strict = lightweightRun({red, blue, thick, upsideDown, tilted});
    runPolylinePasses(strict);
    // An opposite normal is still parallel.
    EXPECT_EQ(strict.edits.erased, (std::vector<ObjectKey>{4}));

    OverkillRun colourBlind = lightweightRun({red, blue, thick, upsideDown, tilted});
    colourBlind.settings.compareColor = false;
    runPolylinePasses(colourBlind);
    EXPECT_EQ(colourBlind.edits.erased, (std::vector<ObjectKey>{2, 4}));
}

TEST(OverkillPolyRules, WithoutPolylinesThePassesOnlyEmptyTheLists) {
    // processPolylines off: the collection step leaves the polyline lists empty.
    OverkillRun run;
    run.settings.processPolylines = false;
    run.lines = {line(11, 0, 0, 5, 0), line(12, 0, 0, 5, 0)};
    run.arcs = {arc(21, 0, 0, 5, 0, 1)};
    runPolylinePasses(run);
    EXPECT_TRUE(run.edits.erased.empty());
    EXPECT_EQ(run.edits.erasedTally, 0);
    EXPECT_TRUE(run.edits.changedPolylines.empty());
    EXPECT_TRUE(run.lines.empty());
    EXPECT_TRUE(run.arcs.empty());
}

TEST(OverkillPolyRules, ToleranceDecidesWhatCountsAsOnASegment) {
    const std::vector<PolylineRecord> polylines = {polyline(1, {{0, 0}, {10, 0}}),
                                                   polyline(2, {{0, 0.001}, {10, 0.001}})};
    OverkillRun tight = lightweightRun(polylines);
    runPolylinePasses(tight);
    EXPECT_TRUE(tight.edits.erased.empty());

    OverkillRun loose = lightweightRun(polylines);
    loose.settings.tolerance = 0.01;
    loose.lines = {line(11, -0.005, 0.005, 10.005, -0.005), line(12, -0.02, 0, 10, 0)};
    runPolylinePasses(loose);
    EXPECT_EQ(loose.edits.erased, (std::vector<ObjectKey>{2, 11}));
}

TEST(OverkillPolyRules, CoordinatesThatAreNotNumbersEraseNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double huge = std::numeric_limits<double>::infinity();
    OverkillRun run =
        lightweightRun({polyline(1, {{0, 0}, {nan, 0}, {10, 0}}), polyline(2, {{0, 0}, {nan, 0}, {10, 0}}),
                        polyline(3, {{huge, 0}, {0, huge, nan}}), polyline(4, {{0, 0}, {10, 0}})});
    run.lines = {line(11, nan, nan, 1, 1), line(12, 2, 0, 3, 0)};
    runPolylinePasses(run);
    // Only what compares as numbers: the line on the last polyline.
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{12}));
}

TEST(OverkillPolyRules, SegmentsOfBulgesFollowThePlaneOfTheNormal) {
    // A polyline in the plane x = 3 whose normal is the x axis: its half circle must stay in that plane.
    PolylineRecord record = polyline(1, {});
    record.normal = {1, 0, 0};
    record.vertices = {{{3, 0, 0}, 1.0}, {{3, 4, 0}, 0.0}};
    const std::vector<PolylineSegment> segments = polylineSegments(record, 1e-9);
    ASSERT_EQ(segments.size(), 1u);
    ASSERT_TRUE(segments[0].isArc);
    EXPECT_NEAR(segments[0].radius, 2.0, 1e-12);
    EXPECT_NEAR(segments[0].center.distanceTo({3, 2, 0}), 0.0, 1e-12);
    EXPECT_NEAR(segments[0].middle.x, 3.0, 1e-12);
    EXPECT_NEAR(std::abs(segments[0].middle.z), 2.0, 1e-12);
    EXPECT_NEAR(segments[0].span, kPi, 1e-12);
}

} // namespace
} // namespace qvtd::overkill::testing
