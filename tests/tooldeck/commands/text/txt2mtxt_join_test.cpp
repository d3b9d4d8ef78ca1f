#include "tooldeck/commands/text/txt2mtxt_join.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

using namespace qvtd::txt2mtxt;

namespace {

SourceText text(std::string s, double x, double y, double height, int colour = 256, double boxLength = 0.0,
                double rotation = 0.0) {
    SourceText t;
    t.text = std::move(s);
    t.alignment = {x, y, 0.0};
    t.height = height;
    t.colour = colour;
    t.boxLength = boxLength;
    t.rotation = rotation;
    return t;
}

std::string plainHeight(double h) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", h);
    return buffer;
}

} // namespace

TEST(Txt2mtxtOrder, TopToBottomWithEqualYKeepingSelectionOrder) {
    const std::vector<double> ys = {0.0, 10.0, 5.0, 10.0, 5.0, -3.0};
    EXPECT_EQ(positionOrder(ys), (std::vector<std::size_t>{1, 3, 2, 4, 0, 5}));
    const std::vector<double> rising = {1.0, 2.0, 3.0};
    EXPECT_EQ(positionOrder(rising), (std::vector<std::size_t>{2, 1, 0}));
    EXPECT_TRUE(positionOrder({}).empty());
}

TEST(Txt2mtxtJoin, ParagraphsCarryHeightAndColourChangesOnlyWhenTheyChange) {
    const std::vector<SourceText> lines = {
        text("one", 1.0, 20.0, 2.5, 256), text("two", 1.0, 15.0, 2.5, 256), text("three", 1.0, 10.0, 3.5, 0),
        text("four", 1.0, 5.0, 2.5, 0),   text("five", 1.0, 0.0, 2.5, 256),
    };
    const JoinedText joined = joinTexts(lines, false, plainHeight);
    EXPECT_EQ(joined.contents, "one\\P two\\P\\H3.5;\\C0; three\\P\\H2.5; four\\P\\C256; five");
    EXPECT_EQ(joined.width, 0.0);
    EXPECT_DOUBLE_EQ(joined.insertion[0], 1.0);
    EXPECT_DOUBLE_EQ(joined.insertion[1], 22.5);
}

TEST(Txt2mtxtJoin, WordWrapRunsOnAndSpansTheTextsAlongX) {
    // Level texts: from the leftmost start to the furthest end.
    const std::vector<SourceText> level = {text("a", 10.0, 5.0, 1.0, 1, 4.0),
                                           text("b", 2.0, 3.0, 1.0, 1, 3.0),
                                           text("c", 12.0, 1.0, 1.0, 2, 5.0)};
    const JoinedText joined = joinTexts(level, true, plainHeight);
    EXPECT_EQ(joined.contents, "a b\\C2; c");
    EXPECT_DOUBLE_EQ(joined.width, 17.0 - 2.0);
    // The insertion point rises by the height whatever the rotation.
    const std::vector<SourceText> turned = {text("a", 0.0, 0.0, 2.0, 7, 4.0, std::numbers::pi)};
    const JoinedText upsideDown = joinTexts(turned, true, plainHeight);
    EXPECT_DOUBLE_EQ(upsideDown.insertion[1], 2.0);
    EXPECT_NEAR(upsideDown.width, 4.0, 1e-12); // runs to the left of its start
}

TEST(Txt2mtxtJoin, VerticalTextsAddTheirHeightOnOneSide) {
    const double up = std::numbers::pi / 2;
    const double down = 3 * std::numbers::pi / 2;
    EXPECT_EQ(snappedCosine(up), 0.0);
    EXPECT_EQ(snappedCosine(down), 0.0);
    EXPECT_DOUBLE_EQ(snappedCosine(0.0), 1.0);
    EXPECT_NE(snappedCosine(up - 1e-3), 0.0);

    const XExtent left = textExtent(text("v", 5.0, 0.0, 2.0, 256, 10.0, up));
    EXPECT_DOUBLE_EQ(left.left, 3.0);
    EXPECT_DOUBLE_EQ(left.right, 5.0);
    const XExtent right = textExtent(text("v", 5.0, 0.0, 2.0, 256, 10.0, down));
    EXPECT_DOUBLE_EQ(right.left, 5.0);
    EXPECT_DOUBLE_EQ(right.right, 7.0);

    // A level lead and a vertical text reaching left of it.
    const std::vector<SourceText> mixed = {text("a", 4.0, 5.0, 1.0, 256, 3.0),
                                           text("b", 4.0, 0.0, 1.5, 256, 10.0, up)};
    EXPECT_DOUBLE_EQ(joinTexts(mixed, true, plainHeight).width, 7.0 - 2.5);
}
