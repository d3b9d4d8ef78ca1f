// Pass 2 and 3: arcs against arcs, arcs against circles, circles against circles.

#include "overkill_test_drawing.h"
#include "qvad/ge/ocs.h"
#include "tooldeck/commands/cleanup/overkill_arcs.h"
#include "tooldeck/commands/cleanup/overkill_circles.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace qvtd::overkill::testing {
namespace {

constexpr double kPi = std::numbers::pi;

OverkillRun arcsRun(std::vector<ArcRecord> arcs, std::vector<CircleRecord> circles = {},
                    OverkillSettings settings = {}) {
    OverkillRun run;
    run.settings = settings;
    run.arcs = std::move(arcs);
    for (const CircleRecord& circle : circles) addCircle(run, circle);
    runArcPass(run);
    return run;
}

std::vector<ObjectKey> arcKeys(const OverkillRun& run) {
    std::vector<ObjectKey> keys;
    for (const ArcRecord& arc : run.arcs) keys.push_back(arc.key);
    return keys;
}

TEST(OverkillArcRules, IdenticalAndOverlappingArcs) {
    const ArcRecord a = makeArc(1, {1, 2, 0}, 3, 0, kPi / 2);
    OverkillRun run = arcsRun({a, makeArc(2, {1, 2, 0}, 3, 0, kPi / 2)});
    EXPECT_EQ(arcKeys(run), std::vector<ObjectKey>{1});
    EXPECT_EQ(run.edits.erasedTally, 1);
    EXPECT_TRUE(run.edits.changedArcs.empty());

    const ArcRecord overlapping = makeArc(2, {1, 2, 0}, 3, kPi / 4, kPi);
    run = arcsRun({a, overlapping});
    ASSERT_EQ(arcKeys(run), std::vector<ObjectKey>{1});
    EXPECT_NEAR(run.arcs[0].startAngle, 0, 1e-12);
    EXPECT_NEAR(run.arcs[0].endAngle, kPi, 1e-12);
    ASSERT_EQ(run.edits.changedArcs.count(1), 1u);
    EXPECT_NEAR(run.edits.changedArcs.at(1).endAngle, kPi, 1e-12);

    OverkillSettings noOverlapping;
    noOverlapping.combineOverlapping = false;
    EXPECT_EQ(arcsRun({a, overlapping}, {}, noOverlapping).arcs.size(), 2u);
    // Another radius or centre, beyond the tolerance.
    EXPECT_EQ(arcsRun({a, makeArc(2, {1, 2, 0}, 3.01, 0, kPi / 2)}).arcs.size(), 2u);
    EXPECT_EQ(arcsRun({a, makeArc(2, {1, 2.01, 0}, 3, 0, kPi / 2)}).arcs.size(), 2u);
}

TEST(OverkillArcRules, SpansWrappingPastAFullTurn) {
    // A runs from 270 degrees through 0 to 45; B covers 0 to 90.
    const ArcRecord a = makeArc(1, {0, 0, 0}, 1, 1.5 * kPi, kPi / 4);
    const ArcRecord b = makeArc(2, {0, 0, 0}, 1, 0, kPi / 2);
    OverkillRun run = arcsRun({a, b});
    ASSERT_EQ(arcKeys(run), std::vector<ObjectKey>{1});
    EXPECT_NEAR(run.arcs[0].startAngle, 1.5 * kPi, 1e-12);
    EXPECT_NEAR(run.arcs[0].endAngle, kPi / 2, 1e-12);

    // Two overlapping arcs that together go all the way round become a circle.
    run = arcsRun({makeArc(1, {0, 0, 0}, 1, 0, 4), makeArc(2, {0, 0, 0}, 1, 3, 0.5)});
    EXPECT_TRUE(run.arcs.empty());
    EXPECT_EQ(run.edits.newCircles.size(), 1u);
    EXPECT_EQ(run.edits.erasedTally, 2);
}

TEST(OverkillArcRules, ComplementingArcsBecomeACircleOnlyWithEndToEnd) {
    ArcRecord a = makeArc(1, {5, 5, 0}, 2, 0, kPi);
    a.props.colorIndex = 3;
    a.props.plotStyle = 9;
    const ArcRecord b = [&] {
        ArcRecord rest = makeArc(2, {5, 5, 0}, 2, kPi, 0);
        rest.props = a.props;
        return rest;
    }();
    OverkillRun run = arcsRun({a, b});
    EXPECT_TRUE(run.arcs.empty());
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{1, 2}));
    EXPECT_EQ(run.edits.erasedTally, 2);
    ASSERT_EQ(run.edits.newCircles.size(), 1u);
    const NewCircle& made = run.edits.newCircles[0];
    EXPECT_EQ(made.madeFrom, 1u);
    EXPECT_EQ(made.circle.props.colorIndex, 3);
    EXPECT_EQ(made.circle.props.plotStyle, 0u) << "the plot style is not carried over";
    EXPECT_DOUBLE_EQ(made.circle.radius, 2);
    // The circle joins the index, under its radius key and layer.
    ASSERT_EQ(run.circles.size(), 1u);
    EXPECT_EQ(run.circleIndex.at(radiusKey(2, run.settings.tolerance)).at("L1").size(), 1u);

    // A third arc of that circle is then covered by the circle just made.
    ArcRecord third = makeArc(3, {5, 5, 0}, 2, 1, 2);
    third.props = a.props;
    run = arcsRun({a, b, third});
    EXPECT_TRUE(run.arcs.empty());
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{1, 2, 3}));
    EXPECT_EQ(run.edits.erasedTally, 2);
    EXPECT_EQ(run.edits.coveredArcsTally, 1);
    // An equal circle on another layer does not stand in for the new one.
    run = arcsRun({a, b}, {onLayer(makeCircle(7, {5, 5, 0}, 2), 4)});
    EXPECT_EQ(run.edits.newCircles.size(), 1u);

    OverkillSettings noEndToEnd;
    noEndToEnd.combineEndToEnd = false;
    run = arcsRun({a, b}, {}, noEndToEnd);
    EXPECT_EQ(run.arcs.size(), 2u);
    EXPECT_TRUE(run.edits.newCircles.empty());

    // With an equal circle already there, the arcs go and nothing is made; the circle covered them,
    // so they do not count as covered arcs either.
    run = arcsRun({a, b}, {makeCircle(7, {5, 5, 0}, 2)});
    EXPECT_TRUE(run.arcs.empty());
    EXPECT_TRUE(run.edits.newCircles.empty());
    EXPECT_EQ(run.edits.erasedTally, 2);
    EXPECT_EQ(run.edits.coveredArcsTally, 0);
}

TEST(OverkillArcRules, ArcsMeetingAtOneEndWithEndToEndOff) {
    OverkillSettings noEndToEnd;
    noEndToEnd.combineEndToEnd = false;
    const ArcRecord a = makeArc(1, {0, 0, 0}, 1, 0, 2);
    // Only touching: nothing happens.
    EXPECT_EQ(compareArcs(noEndToEnd, a, makeArc(2, {0, 0, 0}, 1, 2, 3)).result, ArcResult::None);
    // Sharing the start and lying inside: absorbed, A unchanged.
    const ArcComparison inside = compareArcs(noEndToEnd, a, makeArc(2, {0, 0, 0}, 1, 0, 1));
    EXPECT_EQ(inside.result, ArcResult::Absorbed);
    EXPECT_DOUBLE_EQ(inside.endAngle, 2);
    // Sharing the start and reaching further: A grows.
    const ArcComparison further = compareArcs(noEndToEnd, a, makeArc(2, {0, 0, 0}, 1, 0, 3));
    EXPECT_EQ(further.result, ArcResult::Absorbed);
    EXPECT_DOUBLE_EQ(further.endAngle, 3);
}

// An arc of the plane with the opposite normal that covers the same points as the world angles
// from `from` to `to` (counter-clockwise about +z).
ArcRecord mirroredArc(ObjectKey key, double from, double to) {
    const OdGeVector3d down(0, 0, -1);
    const OcsAxes axes = ocsAxes(down);
    const auto angleInPlane = [&](double world) {
        const OdGeVector3d d(std::cos(world), std::sin(world), 0);
        return std::atan2(d.dotProduct(axes.yAxis), d.dotProduct(axes.xAxis));
    };
    // Turning the other way round, the arc starts where the world arc ends.
    ArcRecord arc = makeArc(key, {0, 0, 0}, 1, angleInPlane(to), angleInPlane(from));
    arc.normal = down;
    return arc;
}

TEST(OverkillArcRules, ArcsWithOppositeNormalsAreComparedInTheReferencesPlane) {
    const ArcRecord a = makeArc(1, {0, 0, 0}, 1, 0, kPi / 2);
    const AngleSpan seen = anglesInPlaneOf(a, mirroredArc(2, 0, kPi / 2));
    EXPECT_NEAR(seen.start, 0, 1e-12);
    EXPECT_NEAR(seen.end, kPi / 2, 1e-12);

    OverkillRun run = arcsRun({a, mirroredArc(2, 0, kPi / 2)});
    EXPECT_EQ(arcKeys(run), std::vector<ObjectKey>{1});
    run = arcsRun({a, mirroredArc(2, kPi / 4, kPi)});
    ASSERT_EQ(arcKeys(run), std::vector<ObjectKey>{1});
    EXPECT_NEAR(run.arcs[0].endAngle, kPi, 1e-12);
    // The mirrored arc as reference keeps its own plane: absorbing the world span 45..180 moves its
    // start there, and seen from +z it then covers 0..180.
    const ArcRecord mirrored = mirroredArc(1, 0, kPi / 2);
    run = arcsRun({mirrored, makeArc(2, {0, 0, 0}, 1, kPi / 4, kPi)});
    ASSERT_EQ(run.arcs.size(), 1u);
    EXPECT_EQ(run.arcs[0].normal.z, -1.0);
    const AngleSpan world = anglesInPlaneOf(a, run.arcs[0]);
    EXPECT_NEAR(std::remainder(world.start, 2 * kPi), 0, 1e-12);
    EXPECT_NEAR(world.end, kPi, 1e-12);
}

TEST(OverkillArcRules, ArcsCoveredByCircles) {
    const ArcRecord arc = makeArc(1, {3, 4, 0}, 2, 0, 1);
    OverkillRun run = arcsRun({arc}, {makeCircle(9, {3, 4, 0}, 2)});
    EXPECT_TRUE(run.arcs.empty());
    EXPECT_EQ(run.edits.coveredArcsTally, 1);
    EXPECT_EQ(run.edits.erasedTally, 0);
    EXPECT_EQ(run.edits.erased, std::vector<ObjectKey>{1});

    // A circle on another layer covers only when layers are not compared.
    const CircleRecord elsewhere = onLayer(makeCircle(9, {3, 4, 0}, 2), 5);
    EXPECT_EQ(arcsRun({arc}, {elsewhere}).arcs.size(), 1u);
    OverkillSettings anyLayer;
    anyLayer.compareLayer = false;
    EXPECT_TRUE(arcsRun({arc}, {onLayer(makeCircle(8, {0, 0, 0}, 2), 6), elsewhere}, anyLayer).arcs.empty());
    EXPECT_EQ(arcsRun({arc}, {onLayer(makeCircle(8, {0, 0, 0}, 2), 6)}, anyLayer).arcs.size(), 1u);

    // No property test here, but the radius key must match.
    CircleRecord red = makeCircle(9, {3, 4, 0}, 2);
    red.props.colorIndex = 1;
    EXPECT_TRUE(arcsRun({arc}, {red}).arcs.empty());
    EXPECT_EQ(arcsRun({arc}, {makeCircle(9, {3, 4, 0}, 2.5)}).arcs.size(), 1u);

    // The centre test uses the tolerance as given: 0 means exactly equal.
    OverkillSettings exact;
    exact.tolerance = 0.0;
    EXPECT_EQ(arcsRun({arc}, {makeCircle(9, {3, 4 + 5e-11, 0}, 2)}, exact).arcs.size(), 1u);
    EXPECT_TRUE(arcsRun({arc}, {makeCircle(9, {3, 4, 0}, 2)}, exact).arcs.empty());
}

TEST(OverkillCircleRules, LaterDuplicateCirclesGo) {
    OverkillRun run;
    addCircle(run, makeCircle(1, {0, 0, 0}, 1));
    addCircle(run, makeCircle(2, {5, 0, 0}, 1));
    addCircle(run, makeCircle(3, {5e-7, 0, 0}, 1));
    CircleRecord red = makeCircle(4, {0, 0, 0}, 1);
    red.props.colorIndex = 1;
    addCircle(run, red);
    addCircle(run, onLayer(makeCircle(5, {0, 0, 0}, 1), 2));
    OverkillRun ignoringColour = run;
    ignoringColour.settings.compareColor = false;
    ignoringColour.settings.compareLayer = false;

    runCirclePass(run);
    ASSERT_EQ(run.circles.size(), 4u);
    EXPECT_EQ(run.edits.erased, std::vector<ObjectKey>{3});
    EXPECT_EQ(run.edits.erasedTally, 1);
    // The index entries follow the renumbered records.
    for (const auto& [key, byLayer] : run.circleIndex)
        for (const auto& [layer, entries] : byLayer)
            for (const CircleEntry& entry : entries) EXPECT_EQ(run.circles[entry.record].key, entry.key);

    // Circles on other layers sit in other lists and never meet, even with layers ignored.
    runCirclePass(ignoringColour);
    EXPECT_EQ(ignoringColour.edits.erased, (std::vector<ObjectKey>{3, 4}));
}

} // namespace
} // namespace qvtd::overkill::testing
