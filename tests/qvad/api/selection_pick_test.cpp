// Picking one object: qvedEntSel by point, by handle, missed and empty answers, and the nested pick
// into block references within block references.

#include "selection_fixture.h"

#include <cstdio>

namespace {

using selection_test::SelectionTest;

TEST_F(SelectionTest, EntSelByPointHandleMissAndEnter) {
    setViewHeight(100);
    const long long a = line(0, 0, 2, 0), b = line(10, 0, 12, 0);
    qv_name picked = {0, 0};
    qv_point at = {0, 0, 0};
    console.answers = {"1,0.25"};
    ASSERT_EQ(qvedEntSel(nullptr, picked, at), QV_NORM);
    EXPECT_EQ(picked[1], a);
    EXPECT_DOUBLE_EQ(at[1], 0.25);
    EXPECT_NE(console.shown.find("Select object: "), std::string::npos);

    console.answers = {"5,5", "junk", "11,0"};
    ASSERT_EQ(qvedEntSel("\nPick a wall: ", picked, at), QV_NORM);
    EXPECT_EQ(picked[1], b);
    EXPECT_NE(console.shown.find("Nothing selected."), std::string::npos);
    EXPECT_NE(console.shown.find("*Invalid selection*"), std::string::npos);

    char handle[32];
    std::snprintf(handle, sizeof handle, "#%llx", a);
    console.answers = {handle};
    ASSERT_EQ(qvedEntSel(nullptr, picked, at), QV_NORM);
    EXPECT_EQ(picked[1], a);

    console.answers = {""};
    EXPECT_EQ(qvedEntSel(nullptr, picked, at), QV_RTNONE);
    EXPECT_EQ(picked[1], 0);
    console.answers = {};
    EXPECT_EQ(qvedEntSel(nullptr, picked, at), QV_CANCEL);
}

TEST_F(SelectionTest, NestedPickReachesTheInnermostEntity) {
    loadR12(R"(0 BLOCK
               8 0
               2 INNER
               70 0
               10 0
               20 0
               30 0
               0 LINE
               8 0
               10 0
               20 0
               30 0
               11 1
               21 0
               31 0
               0 ENDBLK
               8 0
               0 BLOCK
               8 0
               2 OUTER
               70 0
               10 0
               20 0
               30 0
               0 INSERT
               8 0
               2 INNER
               10 5
               20 0
               30 0
               41 2
               42 2
               43 2
               0 ENDBLK
               8 0)",
            R"(0 INSERT
               8 0
               2 OUTER
               10 100
               20 100
               30 0
               50 90)");
    setViewHeight(100);
    const auto handleIn = [&](const char* block) {
        return static_cast<long long>(db->findBlock(block)->entities().at(0)->handle());
    };
    const long long outerRef = static_cast<long long>(db->modelSpace()->entities().at(0)->handle());
    // OUTER turned a quarter at (100,100); INNER inside it at (5,0) scaled 2: the line runs from
    // (100,105) to (100,107).
    qv_name picked = {0, 0};
    qv_point at = {100, 106, 0};
    qv_real matrix[4][4];
    qv_resbuf* containers = nullptr;
    ASSERT_EQ(qvedNEntSelP(nullptr, picked, at, 1, matrix, &containers), QV_NORM);
    EXPECT_EQ(picked[1], handleIn("INNER"));
    ASSERT_NE(containers, nullptr);
    EXPECT_EQ(containers->restype, QV_RTENAME);
    EXPECT_EQ(containers->resval.rlname[1], handleIn("OUTER")) << "innermost reference first";
    ASSERT_NE(containers->rbnext, nullptr);
    EXPECT_EQ(containers->rbnext->resval.rlname[1], outerRef);
    EXPECT_EQ(containers->rbnext->rbnext, nullptr);
    qvutRelRb(containers);
    // The matrix takes INNER's (1,0) to the world's (100,107).
    const double x = matrix[0][0] * 1 + matrix[0][3], y = matrix[1][0] * 1 + matrix[1][3];
    EXPECT_NEAR(x, 100.0, 1e-9);
    EXPECT_NEAR(y, 107.0, 1e-9);

    // Asked, with a miss first; the plain qvedEntSel names the outer reference.
    console.answers = {"0,0", "100.1,105.5"};
    ASSERT_EQ(qvedNEntSelP(nullptr, picked, at, 0, matrix, &containers), QV_NORM);
    EXPECT_EQ(picked[1], handleIn("INNER"));
    qvutRelRb(containers);
    console.answers = {"100.1,105.5"};
    ASSERT_EQ(qvedEntSel(nullptr, picked, at), QV_NORM);
    EXPECT_EQ(picked[1], outerRef);
    qv_point nowhere = {50, 50, 0};
    EXPECT_EQ(qvedNEntSelP(nullptr, picked, nowhere, 1, matrix, &containers), QV_ERROR);
}

} // namespace
