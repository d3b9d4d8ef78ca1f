// The grouped passes against the plain pairwise definition on random drawings.

#include "overkill_pairwise.h"
#include "overkill_test_drawing.h"
#include "tooldeck/commands/cleanup/overkill_curve_passes.h"

#include <chrono>
#include <gtest/gtest.h>
#include <iostream>

namespace qvtd::overkill::testing {
namespace {

constexpr double kSameGeometry = 1e-9;

void expectSameOutcome(const OverkillRun& fast, const OverkillRun& reference) {
    ASSERT_EQ(fast.lines.size(), reference.lines.size());
    for (std::size_t k = 0; k < fast.lines.size(); ++k) {
        EXPECT_EQ(fast.lines[k].key, reference.lines[k].key);
        EXPECT_LE(fast.lines[k].start.distanceTo(reference.lines[k].start), kSameGeometry);
        EXPECT_LE(fast.lines[k].end.distanceTo(reference.lines[k].end), kSameGeometry);
    }
    ASSERT_EQ(fast.arcs.size(), reference.arcs.size());
    for (std::size_t k = 0; k < fast.arcs.size(); ++k) {
        EXPECT_EQ(fast.arcs[k].key, reference.arcs[k].key);
        EXPECT_NEAR(fast.arcs[k].startAngle, reference.arcs[k].startAngle, kSameGeometry);
        EXPECT_NEAR(fast.arcs[k].endAngle, reference.arcs[k].endAngle, kSameGeometry);
    }
    ASSERT_EQ(fast.circles.size(), reference.circles.size());
    for (std::size_t k = 0; k < fast.circles.size(); ++k) {
        EXPECT_EQ(fast.circles[k].key, reference.circles[k].key);
        EXPECT_LE(fast.circles[k].center.distanceTo(reference.circles[k].center), kSameGeometry);
    }
    // The index lists that still hold circles, entry by entry.
    const auto listed = [](const OverkillRun& run) {
        std::vector<std::tuple<long long, std::string, ObjectKey, std::size_t>> entries;
        for (const auto& [key, byLayer] : run.circleIndex)
            for (const auto& [layer, list] : byLayer)
                for (const CircleEntry& entry : list)
                    entries.emplace_back(key, layer, entry.key, entry.record);
        return entries;
    };
    EXPECT_EQ(listed(fast), listed(reference));

    EXPECT_EQ(fast.edits.erased, reference.edits.erased);
    EXPECT_EQ(fast.edits.erasedTally, reference.edits.erasedTally);
    EXPECT_EQ(fast.edits.coveredArcsTally, reference.edits.coveredArcsTally);
    ASSERT_EQ(fast.edits.changedLines.size(), reference.edits.changedLines.size());
    for (const auto& [key, line] : reference.edits.changedLines) {
        const auto found = fast.edits.changedLines.find(key);
        ASSERT_NE(found, fast.edits.changedLines.end()) << "line " << key;
        EXPECT_LE(found->second.start.distanceTo(line.start), kSameGeometry);
        EXPECT_LE(found->second.end.distanceTo(line.end), kSameGeometry);
    }
    ASSERT_EQ(fast.edits.changedArcs.size(), reference.edits.changedArcs.size());
    for (const auto& [key, arc] : reference.edits.changedArcs) {
        const auto found = fast.edits.changedArcs.find(key);
        ASSERT_NE(found, fast.edits.changedArcs.end()) << "arc " << key;
        EXPECT_NEAR(found->second.startAngle, arc.startAngle, kSameGeometry);
        EXPECT_NEAR(found->second.endAngle, arc.endAngle, kSameGeometry);
    }
    ASSERT_EQ(fast.edits.newCircles.size(), reference.edits.newCircles.size());
    for (std::size_t k = 0; k < fast.edits.newCircles.size(); ++k) {
        EXPECT_EQ(fast.edits.newCircles[k].madeFrom, reference.edits.newCircles[k].madeFrom);
        EXPECT_EQ(fast.edits.newCircles[k].circle.props.colorIndex,
                  reference.edits.newCircles[k].circle.props.colorIndex);
    }
}

RandomDrawingShape shapeOf(std::uint32_t seed, int lines, int arcs, int circles, int spread = 20) {
    RandomDrawingShape shape;
    shape.seed = seed;
    shape.lines = lines;
    shape.arcs = arcs;
    shape.circles = circles;
    shape.spread = spread;
    return shape;
}

struct OptionMix {
    const char* name;
    OverkillSettings settings;
};

std::vector<OptionMix> optionMixes() {
    std::vector<OptionMix> mixes;
    mixes.push_back({"defaults", OverkillSettings{}});
    OverkillSettings zero;
    zero.tolerance = 0.0;
    mixes.push_back({"tolerance 0", zero});
    OverkillSettings large;
    large.tolerance = 0.05;
    large.compareLayer = false;
    large.compareColor = false;
    mixes.push_back({"large tolerance, layer and colour ignored", large});
    OverkillSettings overlapOnly;
    overlapOnly.combineEndToEnd = false;
    overlapOnly.compareLinetype = false;
    mixes.push_back({"overlapping only", overlapOnly});
    OverkillSettings endToEndOnly;
    endToEndOnly.combineOverlapping = false;
    endToEndOnly.compareLayer = false;
    mixes.push_back({"end to end only", endToEndOnly});
    OverkillSettings neither;
    neither.combineOverlapping = false;
    neither.combineEndToEnd = false;
    neither.tolerance = 0.01;
    mixes.push_back({"no combining", neither});
    return mixes;
}

TEST(OverkillEquivalence, GroupedPassesMatchThePairwiseDefinitionOnRandomDrawings) {
    int changedLines = 0, changedArcs = 0, newCircles = 0, coveredArcs = 0;
    for (const OptionMix& mix : optionMixes())
        for (std::uint32_t seed : {1u, 2u, 3u}) {
            SCOPED_TRACE(std::string(mix.name) + ", seed " + std::to_string(seed));
            OverkillRun fast;
            fast.settings = mix.settings;
            fillRandomDrawing(fast, shapeOf(seed, 2500, 1500, 300));
            OverkillRun reference = fast;
            runCurvePasses(fast);
            pairwiseCurvePasses(reference);
            expectSameOutcome(fast, reference);
            EXPECT_GT(reference.edits.erasedTally, 0);
            changedLines += static_cast<int>(reference.edits.changedLines.size());
            changedArcs += static_cast<int>(reference.edits.changedArcs.size());
            newCircles += static_cast<int>(reference.edits.newCircles.size());
            coveredArcs += reference.edits.coveredArcsTally;
        }
    // Far from the origin, where rounding is larger than the smallest tolerance.
    for (double tolerance : {0.0, 1e-6}) {
        SCOPED_TRACE("far from the origin, tolerance " + std::to_string(tolerance));
        OverkillRun fast;
        fast.settings.tolerance = tolerance;
        RandomDrawingShape shape = shapeOf(4u, 2000, 1000, 200);
        shape.offset = {123456.0, -654321.0, 0.0};
        fillRandomDrawing(fast, shape);
        OverkillRun reference = fast;
        runCurvePasses(fast);
        pairwiseCurvePasses(reference);
        expectSameOutcome(fast, reference);
        EXPECT_GT(reference.edits.erasedTally, 0);
    }
    // The drawings must exercise every kind of outcome, or the comparison proves little.
    EXPECT_GT(changedLines, 0);
    EXPECT_GT(changedArcs, 0);
    EXPECT_GT(newCircles, 0);
    EXPECT_GT(coveredArcs, 0);
}

TEST(OverkillEquivalence, LargeDrawingRunsThroughTheGroupedPasses) {
    OverkillRun run;
    fillRandomDrawing(run, shapeOf(7u, 200000, 20000, 5000, 3000));
    const std::size_t before = run.lines.size() + run.arcs.size() + run.circles.size();
    const auto started = std::chrono::steady_clock::now();
    runCurvePasses(run);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - started;
    std::cout << "[ timing   ] " << before << " records: " << run.edits.erasedTally << " erased, "
              << run.edits.coveredArcsTally << " covered arcs in " << took.count() << " s\n";
    EXPECT_GT(run.edits.erasedTally, 0);
    EXPECT_EQ(run.lines.size() + run.arcs.size() + run.circles.size() + run.edits.erased.size(),
              before + run.edits.newCircles.size())
        << "every record either survives or is erased";
}

} // namespace
} // namespace qvtd::overkill::testing
