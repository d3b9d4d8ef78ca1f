// Pass 1: which lines are erased, which grow, and how the options change that.

#include "overkill_test_drawing.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"

#include <gtest/gtest.h>

namespace qvtd::overkill::testing {
namespace {

OverkillRun linesRun(std::vector<LineRecord> lines, OverkillSettings settings = {}) {
    OverkillRun run;
    run.settings = settings;
    run.lines = std::move(lines);
    runLinePass(run);
    return run;
}

std::vector<ObjectKey> survivors(const OverkillRun& run) {
    std::vector<ObjectKey> keys;
    for (const LineRecord& line : run.lines) keys.push_back(line.key);
    return keys;
}

void expectLine(const LineRecord& line, OdGePoint3d start, OdGePoint3d end) {
    EXPECT_LE(line.start.distanceTo(start), 1e-12) << line.start.x << "," << line.start.y;
    EXPECT_LE(line.end.distanceTo(end), 1e-12) << line.end.x << "," << line.end.y;
}

TEST(OverkillLineRules, ReversedDuplicateLosesToTheLineSelectedFirst) {
    const LineRecord forward = makeLine(1, {0, 0, 0}, {10, 0, 0});
    const LineRecord backward = makeLine(2, {10, 0, 0}, {0, 0, 0});
    OverkillRun run = linesRun({forward, backward});
    EXPECT_EQ(survivors(run), std::vector<ObjectKey>{1});
    EXPECT_EQ(run.edits.erased, std::vector<ObjectKey>{2});
    EXPECT_EQ(run.edits.erasedTally, 1);
    EXPECT_TRUE(run.edits.changedLines.empty());

    run = linesRun({backward, forward});
    EXPECT_EQ(survivors(run), std::vector<ObjectKey>{2});
    expectLine(run.lines[0], {10, 0, 0}, {0, 0, 0});

    // Duplicates go whatever the combine options say.
    OverkillSettings noCombining;
    noCombining.combineOverlapping = noCombining.combineEndToEnd = false;
    EXPECT_EQ(linesRun({forward, backward}, noCombining).edits.erasedTally, 1);
}

TEST(OverkillLineRules, OverlappingLinesMergeOnlyWithCombineOverlapping) {
    const LineRecord a = makeLine(1, {0, 0, 0}, {10, 0, 0});
    const LineRecord b = makeLine(2, {15, 0, 0}, {5, 0, 0});
    OverkillRun run = linesRun({a, b});
    ASSERT_EQ(survivors(run), std::vector<ObjectKey>{1});
    expectLine(run.lines[0], {0, 0, 0}, {15, 0, 0});
    ASSERT_EQ(run.edits.changedLines.count(1), 1u);
    expectLine(run.edits.changedLines.at(1), {0, 0, 0}, {15, 0, 0});

    // B reaching past A's start: A's start moves, its direction stays.
    run = linesRun({a, makeLine(2, {-4, 0, 0}, {3, 0, 0})});
    expectLine(run.lines[0], {-4, 0, 0}, {10, 0, 0});

    OverkillSettings endToEndOnly;
    endToEndOnly.combineOverlapping = false;
    EXPECT_EQ(linesRun({a, b}, endToEndOnly).lines.size(), 2u);

    // A piece lying within A goes, and A keeps its exact ends.
    run = linesRun({a, makeLine(2, {2, 0, 0}, {3, 0, 0})});
    EXPECT_EQ(survivors(run), std::vector<ObjectKey>{1});
    EXPECT_TRUE(run.edits.changedLines.empty());
}

TEST(OverkillLineRules, EndToEndLinesMergeOnlyWithCombineEndToEnd) {
    const LineRecord a = makeLine(1, {0, 0, 0}, {10, 10, 0});
    const LineRecord b = makeLine(2, {20, 20, 0}, {10, 10, 0});
    OverkillRun run = linesRun({a, b});
    ASSERT_EQ(run.lines.size(), 1u);
    expectLine(run.lines[0], {0, 0, 0}, {20, 20, 0});

    OverkillSettings overlapOnly;
    overlapOnly.combineEndToEnd = false;
    EXPECT_EQ(linesRun({a, b}, overlapOnly).lines.size(), 2u);
    OverkillSettings endToEndOnly;
    endToEndOnly.combineOverlapping = false;
    EXPECT_EQ(linesRun({a, b}, endToEndOnly).lines.size(), 1u);

    // A gap wider than the tolerance keeps them apart.
    EXPECT_EQ(linesRun({a, makeLine(2, {10.001, 10.001, 0}, {20, 20, 0})}).lines.size(), 2u);
}

TEST(OverkillLineRules, GrownReferenceIsComparedAgainWithWhatItPassed) {
    // C joins A to B only after A has absorbed it, although B comes first in the list.
    const LineRecord a = makeLine(1, {0, 0, 0}, {2, 0, 0});
    const LineRecord b = makeLine(2, {5, 0, 0}, {7, 0, 0});
    const LineRecord c = makeLine(3, {2, 0, 0}, {5, 0, 0});
    OverkillRun run = linesRun({a, b, c});
    ASSERT_EQ(survivors(run), std::vector<ObjectKey>{1});
    expectLine(run.lines[0], {0, 0, 0}, {7, 0, 0});
    EXPECT_EQ(run.edits.erased, (std::vector<ObjectKey>{3, 2}));
    EXPECT_EQ(run.edits.erasedTally, 2);
}

TEST(OverkillLineRules, NearDuplicatesWithinAndJustBeyondTheTolerance) {
    OverkillSettings settings;
    settings.tolerance = 0.001;
    const LineRecord a = makeLine(1, {0, 0, 0}, {10, 0, 0});
    const LineRecord within = makeLine(2, {0.0005, 0.0007, 0}, {10, -0.0009, 0});
    const LineRecord beyond = makeLine(3, {0, 0.0011, 0}, {10, 0.0011, 0});
    EXPECT_EQ(compareLines(settings, a, within).relation, LineRelation::Duplicate);
    EXPECT_EQ(compareLines(settings, a, beyond).relation, LineRelation::None);
    EXPECT_EQ(survivors(linesRun({a, within, beyond}, settings)), (std::vector<ObjectKey>{1, 3}));

    // Tolerance 0 still allows for rounding, and no more.
    settings.tolerance = 0.0;
    const LineRecord rounded = makeLine(2, {5e-11, 0, 0}, {10, 5e-11, 0});
    const LineRecord off = makeLine(3, {2e-10, 0, 0}, {10, 2e-10, 0});
    EXPECT_EQ(compareLines(settings, a, rounded).relation, LineRelation::Duplicate);
    EXPECT_EQ(compareLines(settings, a, off).relation, LineRelation::None);
    // Slightly turned: the far end leaves the carrier.
    EXPECT_EQ(compareLines(settings, a, makeLine(3, {5, 0, 0}, {15, 1e-6, 0})).relation, LineRelation::None);
}

TEST(OverkillLineRules, ThicknessNormalAndPropertiesMustAgree) {
    const LineRecord a = makeLine(1, {0, 0, 0}, {10, 0, 0});
    LineRecord thick = makeLine(2, {0, 0, 0}, {10, 0, 0});
    thick.thickness = 1.0;
    LineRecord sideways = thick;
    sideways.thickness = 0.0;
    sideways.normal = {0, 1, 0};
    LineRecord flipped = sideways;
    flipped.normal = {0, 0, -1};
    const OverkillSettings settings;
    EXPECT_EQ(compareLines(settings, a, thick).relation, LineRelation::None);
    EXPECT_EQ(compareLines(settings, a, sideways).relation, LineRelation::None);
    EXPECT_EQ(compareLines(settings, a, flipped).relation, LineRelation::Duplicate);

    LineRecord red = makeLine(2, {0, 0, 0}, {10, 0, 0});
    red.props.colorIndex = 1;
    const LineRecord otherLayer = onLayer(makeLine(3, {0, 0, 0}, {10, 0, 0}), 7);
    EXPECT_EQ(linesRun({a, red, otherLayer}).lines.size(), 3u);
    OverkillSettings ignoring;
    ignoring.compareColor = false;
    EXPECT_EQ(survivors(linesRun({a, red, otherLayer}, ignoring)), (std::vector<ObjectKey>{1, 3}));
    ignoring.compareLayer = false;
    EXPECT_EQ(survivors(linesRun({a, red, otherLayer}, ignoring)), std::vector<ObjectKey>{1});
}

} // namespace
} // namespace qvtd::overkill::testing
