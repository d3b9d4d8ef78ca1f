#include "qvad/db/entities/OdDbMText.h"
#include "qvad/text/mtext_extents.h"
#include "qvad/text/mtext_format.h"
#include "qvad/text/text_box.h"

#include <gtest/gtest.h>

namespace {

using qvad::text::plainMText;

TEST(MTextFormatTest, FormatCodesAreStrippedToWhatAReaderSees) {
    EXPECT_EQ(plainMText("one\\Ptwo"), "one\ntwo");
    EXPECT_EQ(plainMText("{\\fArial|b1|i0;\\C1;red} and {\\H2x;big}"), "red and big");
    EXPECT_EQ(plainMText("\\Lunder\\l \\Oover\\o \\Kstrike\\k"), "under over strike");
    EXPECT_EQ(plainMText("a\\~b"), "a\xC2\xA0"
                                   "b");
    EXPECT_EQ(plainMText("\\\\ \\{x\\}"), "\\ {x}");
    EXPECT_EQ(plainMText("\\U+00B0C %%c10 %%d %%p0.5 100%%%"), "\xC2\xB0"
                                                               "C \xE2\x8C\x80"
                                                               "10 \xC2\xB0 \xC2\xB1"
                                                               "0.5 100%");
    EXPECT_EQ(plainMText("\\A1;\\pxqc;\\T1.1;\\Q15;\\W0.8;x"), "x");
    EXPECT_EQ(plainMText("\\S1^2; \\S3/4;"), "1/2 3/4");
    // Broken input still gives text, never an error.
    EXPECT_EQ(plainMText("}}{\\H"), "");
    EXPECT_EQ(plainMText("end\\"), "end\\");
}

TEST(MTextFormatTest, HeightChangesApplyInsideTheirGroupOnly) {
    auto lines = qvad::text::parseMText("a{\\H5;b\\H2x;c}d", 2.5);
    ASSERT_EQ(lines.size(), 1u);
    const auto& runs = lines[0].runs;
    ASSERT_EQ(runs.size(), 4u);
    EXPECT_DOUBLE_EQ(runs[0].heightFactor, 1.0);
    EXPECT_DOUBLE_EQ(runs[1].heightFactor, 2.0); // 5 absolute over 2.5
    EXPECT_DOUBLE_EQ(runs[2].heightFactor, 4.0); // twice the 5
    EXPECT_DOUBLE_EQ(runs[3].heightFactor, 1.0);
}

class MTextBoundsTest : public testing::Test {
protected:
    void SetUp() override {
        mtext.assignTags({{0, "MTEXT"},
                          {100, "AcDbEntity"},
                          {8, "0"},
                          {100, "AcDbMText"},
                          {10, "10"},
                          {20, "20"},
                          {30, "0"},
                          {40, "2.5"},
                          {41, "0"},
                          {71, "5"},
                          {72, "1"},
                          {1, "first line\\Psecond"},
                          {7, "STANDARD"}});
    }
    OdDbMText mtext;
};

TEST_F(MTextBoundsTest, TwoLinesCenteredOnTheMiddleAttachment) {
    qvad::text::MTextSize size = qvad::text::mtextSize(mtext);
    EXPECT_EQ(size.lineCount, 2);
    // Capitals of the first line down to the baseline of the second, one line pitch apart.
    EXPECT_NEAR(size.height, 2.5 + 2.5 * 5.0 / 3.0, 1e-9);

    qvad::text::SingleLineText longest;
    longest.textString = "first line";
    longest.height = 2.5;
    longest.fontFile = std::string(qvad::text::kDefaultFontFile);
    qvad::text::TextBox line = qvad::text::textBox(longest);
    EXPECT_NEAR(size.width, line.upperRight.x - line.lowerLeft.x, 1e-9);

    auto corners = qvad::text::mtextBoundingPoints(mtext);
    const auto& [topLeft, topRight, bottomLeft, bottomRight] = corners;
    EXPECT_NEAR((topLeft.x + bottomRight.x) / 2.0, 10.0, 1e-9);
    EXPECT_NEAR((topLeft.y + bottomRight.y) / 2.0, 20.0, 1e-9);
    EXPECT_NEAR(topRight.x - topLeft.x, size.width, 1e-9);
    EXPECT_NEAR(topLeft.y - bottomLeft.y, size.height, 1e-9);
    EXPECT_NEAR(bottomRight.y, bottomLeft.y, 1e-12);
}

TEST_F(MTextBoundsTest, DirectionTurnsTheBlockAndAttachmentPlacesIt) {
    mtext.setDirection({0, 1, 0}); // text runs up the y axis
    mtext.setAttachment(OdDbMText::kTopLeft);
    qvad::text::MTextSize size = qvad::text::mtextSize(mtext);
    auto [topLeft, topRight, bottomLeft, bottomRight] = qvad::text::mtextBoundingPoints(mtext);
    EXPECT_NEAR(topLeft.x, 10.0, 1e-9);
    EXPECT_NEAR(topLeft.y, 20.0, 1e-9);
    EXPECT_NEAR(topRight.y, 20.0 + size.width, 1e-9);
    EXPECT_NEAR(bottomLeft.x, 10.0 + size.height, 1e-9); // "down" the page is +x when text runs up
}

TEST_F(MTextBoundsTest, ReferenceWidthWrapsAtSpacesAndSetsTheWidth) {
    mtext.setContents("aaa bbb ccc\\Pddd");
    mtext.setWidth(1000.0);
    EXPECT_EQ(qvad::text::mtextSize(mtext).lineCount, 2);
    EXPECT_DOUBLE_EQ(qvad::text::mtextSize(mtext).width, 1000.0);
    mtext.setWidth(0.1); // narrower than any word: each word gets a line of its own
    EXPECT_EQ(qvad::text::mtextSize(mtext).lineCount, 4);
}

} // namespace
