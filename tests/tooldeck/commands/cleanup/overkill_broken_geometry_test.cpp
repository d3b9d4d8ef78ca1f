// Records with broken numbers (not a number, infinite, absurd angles) must not stop a run, and must
// not change what happens to the sound records around them.

#include "overkill_pairwise.h"
#include "overkill_test_drawing.h"
#include "tooldeck/commands/cleanup/overkill_curve_passes.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace qvtd::overkill::testing {
namespace {

TEST(OverkillBrokenGeometry, RunsThroughAndLeavesTheBrokenRecordsAlone) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double inf = std::numeric_limits<double>::infinity();
    OverkillRun run;
    run.lines = {makeLine(1, {0, 0, 0}, {1, 0, 0}),     makeLine(2, {nan, 0, 0}, {1, 0, 0}),
                 makeLine(3, {0, 0, 0}, {inf, 0, 0}),   makeLine(4, {5, 5, 0}, {5, 5, 0}),
                 makeLine(5, {5, 5, 0}, {5, 5, 0}),     makeLine(6, {1, 0, 0}, {0, 0, 0}),
                 makeLine(7, {-inf, 0, 0}, {inf, 0, 0})};
    run.arcs = {makeArc(10, {0, 0, 0}, 1, 1e300, 2), makeArc(11, {0, 0, 0}, nan, 0, 1),
                makeArc(12, {0, 0, 0}, 1, inf, nan), makeArc(13, {0, 0, 0}, 1, 0.5, 1),
                makeArc(14, {0, 0, 0}, 1, 0.5, 1)};
    addCircle(run, makeCircle(20, {inf, 0, 0}, 1));
    addCircle(run, makeCircle(21, {nan, nan, nan}, 1));
    addCircle(run, makeCircle(22, {0, 0, 0}, inf));
    OverkillRun reference = run;
    runCurvePasses(run);
    pairwiseCurvePasses(reference);

    EXPECT_EQ(run.edits.erased, reference.edits.erased);
    // The reversed duplicate and the second zero-length line go, the broken lines stay.
    ASSERT_EQ(run.lines.size(), 5u);
    EXPECT_EQ(run.lines[1].key, 2u);
    EXPECT_EQ(run.lines[2].key, 3u);
    EXPECT_EQ(run.lines[4].key, 7u);
    EXPECT_EQ(run.edits.erased[0], 6u);
    EXPECT_EQ(run.edits.erased[1], 5u);
    // Arcs with a radius or angles that are not numbers stay, and no broken circle covers or goes.
    std::vector<ObjectKey> arcs;
    for (const ArcRecord& arc : run.arcs) arcs.push_back(arc.key);
    EXPECT_NE(std::find(arcs.begin(), arcs.end(), 11u), arcs.end());
    EXPECT_NE(std::find(arcs.begin(), arcs.end(), 12u), arcs.end());
    EXPECT_EQ(run.edits.coveredArcsTally, 0);
    EXPECT_EQ(run.circles.size(), 3u);
}

} // namespace
} // namespace qvtd::overkill::testing
