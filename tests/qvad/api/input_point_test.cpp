// Point prompts: typed absolute, relative and polar points, the last point they leave behind, the
// re-prompt after a bad answer, empty answers, keywords, cancelling and the end of input.

#include "input_fixture.h"

#include <cmath>
#include <numbers>

namespace {

using qvad::test::InputTest;
using InputPoint = InputTest;

TEST_F(InputPoint, TypedPointsAreTakenAndBecomeTheLastPoint) {
    answers({"1,2", "1.5,-2,3.25", "  4 , 5  "});
    qv_point p{};
    ASSERT_EQ(qvedGetPoint(nullptr, "\nSpecify point: ", p), QV_NORM);
    EXPECT_DOUBLE_EQ(p[0], 1.0);
    EXPECT_DOUBLE_EQ(p[1], 2.0);
    EXPECT_DOUBLE_EQ(p[2], 0.0);
    ASSERT_EQ(qvedGetPoint(nullptr, "\nSpecify point: ", p), QV_NORM);
    EXPECT_EQ(lastPoint(), (std::vector<double>{1.5, -2.0, 3.25}));
    ASSERT_EQ(qvedGetPoint(nullptr, "\nSpecify point: ", p), QV_NORM);
    EXPECT_DOUBLE_EQ(p[0], 4.0);
    EXPECT_DOUBLE_EQ(p[1], 5.0);
}

TEST_F(InputPoint, TwoNumberPointsSitAtTheElevation) {
    setReal("ELEVATION", 7.5);
    answers({"1,2"});
    qv_point p{};
    ASSERT_EQ(qvedGetPoint(nullptr, "\nPoint: ", p), QV_NORM);
    EXPECT_DOUBLE_EQ(p[2], 7.5);
}

TEST_F(InputPoint, RelativeAndPolarPointsCountFromTheLastPoint) {
    setLastPoint(1.0, 1.0, 5.0);
    answers({"@3,4", "@", "@0,0,-5", "@10<90", "10<0"});
    qv_point p{};
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_EQ(std::vector<double>(p, p + 3), (std::vector<double>{4.0, 5.0, 5.0}));
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_EQ(std::vector<double>(p, p + 3), (std::vector<double>{4.0, 5.0, 5.0}));
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_EQ(std::vector<double>(p, p + 3), (std::vector<double>{4.0, 5.0, 0.0}));
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_NEAR(p[0], 4.0, 1e-12);
    EXPECT_NEAR(p[1], 15.0, 1e-12);
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_NEAR(p[0], 10.0, 1e-12);
    EXPECT_NEAR(p[1], 0.0, 1e-12);
}

TEST_F(InputPoint, PolarAnglesFollowAngbaseAndAngdir) {
    setReal("ANGBASE", std::numbers::pi / 2); // zero points north
    setShort("ANGDIR", 1);                    // and angles turn clockwise
    setLastPoint(0.0, 0.0, 0.0);
    answers({"@10<90", "@10<0"});
    qv_point p{};
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_NEAR(p[0], 10.0, 1e-9); // 90 clockwise from north is east
    EXPECT_NEAR(p[1], 0.0, 1e-9);
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_NEAR(p[0], 10.0, 1e-9);
    EXPECT_NEAR(p[1], 10.0, 1e-9);
}

TEST_F(InputPoint, BadAnswersGetTheMessageAndThePromptAgain) {
    auto& console = answers({"1,x", "abc", "1", "1,2,3,4", "2,3"});
    qv_point p{};
    ASSERT_EQ(qvedGetPoint(nullptr, "\nSpecify point: ", p), QV_NORM);
    EXPECT_DOUBLE_EQ(p[0], 2.0);
    EXPECT_EQ(console.transcript(), "Specify point: 1,x\n"
                                    "Point or option keyword required.\n"
                                    "Specify point: abc\n"
                                    "Point or option keyword required.\n"
                                    "Specify point: 1\n"
                                    "Point or option keyword required.\n"
                                    "Specify point: 1,2,3,4\n"
                                    "Point or option keyword required.\n"
                                    "Specify point: 2,3\n");
    EXPECT_EQ(lastPoint(), (std::vector<double>{2.0, 3.0, 0.0})); // bad answers left it alone
}

TEST_F(InputPoint, EmptyAnswerIsNoneUnlessRequired) {
    auto& console = answers({"", "", "5,5"});
    qv_point p{9, 9, 9};
    EXPECT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_RTNONE);
    EXPECT_EQ(p[0], 9.0);
    qvedInitGet(QV_INP_NONULL, nullptr);
    EXPECT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_NORM);
    EXPECT_EQ(p[0], 5.0);
    EXPECT_EQ(console.answersLeft(), 0u);
    // The bits held for one call only.
    answers({""});
    EXPECT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_RTNONE);
}

TEST_F(InputPoint, KeywordsArbitraryTextCancelAndEndOfInput) {
    answers({"win", "c", "hello there", "^C"});
    qv_point p{};
    char word[32] = "";
    qvedInitGet(0, "Window Crossing");
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_KWORD);
    ASSERT_EQ(qvedGetInput(word, sizeof word), QV_NORM);
    EXPECT_STREQ(word, "Window");
    qvedInitGet(0, "Window Crossing");
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_KWORD);
    ASSERT_EQ(qvedGetInput(word, sizeof word), QV_NORM);
    EXPECT_STREQ(word, "Crossing");
    qvedInitGet(QV_INP_ARBITRARY, "Window");
    ASSERT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_KWORD);
    ASSERT_EQ(qvedGetInput(word, sizeof word), QV_NORM);
    EXPECT_STREQ(word, "hello there");
    EXPECT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_CANCEL);
    EXPECT_FALSE(qvad::api::inputEnded());
    EXPECT_EQ(qvedGetPoint(nullptr, "\nP: ", p), QV_CANCEL);
    EXPECT_TRUE(qvad::api::inputEnded());
}

TEST_F(InputPoint, CornerNeedsItsBase) {
    answers({"3,4"});
    qv_point base{0, 0, 0}, p{};
    EXPECT_EQ(qvedGetCorner(nullptr, "\nOther corner: ", p), QV_ERROR);
    EXPECT_EQ(qvedGetCorner(base, "\nOther corner: ", p), QV_NORM);
    EXPECT_DOUBLE_EQ(p[1], 4.0);
}

} // namespace
