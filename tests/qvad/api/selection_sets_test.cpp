// Selection-set names and their life: adding, removing, membership, freeing, the pick-first and
// previous sets, and the non-interactive modes of qvedSSGet.

#include "qvad/api/selection_sets.h"
#include "selection_fixture.h"

namespace {

using selection_test::SelectionTest;
using Found = std::set<long long>;

TEST_F(SelectionTest, SetsGrowShrinkAndAreRefusedOnceFreed) {
    const long long a = line(0, 0, 1, 0), b = line(0, 1, 1, 1);
    qv_name ea = {0, 0}, eb = {0, 0};
    ASSERT_EQ(qvdbEntLast(eb), QV_NORM);
    ea[0] = eb[0];
    ea[1] = a;
    ASSERT_EQ(eb[1], b);

    qv_name ss = {0, 0};
    ASSERT_EQ(qvedSSAdd(nullptr, nullptr, ss), QV_NORM);
    EXPECT_NE(ss[0], ea[0]) << "a set's name must not read as an entity's";
    long length = -1;
    ASSERT_EQ(qvedSSLength(ss, &length), QV_NORM);
    EXPECT_EQ(length, 0);
    qv_name same = {0, 0};
    EXPECT_EQ(qvedSSAdd(ea, ss, same), QV_NORM);
    EXPECT_EQ(qvedSSAdd(ea, ss, same), QV_NORM);
    EXPECT_EQ(qvedSSAdd(eb, ss, same), QV_NORM);
    EXPECT_EQ(same[1], ss[1]);
    qvedSSLength(ss, &length);
    EXPECT_EQ(length, 2) << "adding a member twice keeps one";
    EXPECT_EQ(qvedSSMemb(ea, ss), QV_NORM);
    EXPECT_EQ(qvedSSDel(ea, ss), QV_NORM);
    EXPECT_EQ(qvedSSMemb(ea, ss), QV_ERROR);
    EXPECT_EQ(qvedSSDel(ea, ss), QV_ERROR);
    qv_name nth = {0, 0};
    EXPECT_EQ(qvedSSName(ss, 0, nth), QV_NORM);
    EXPECT_EQ(nth[1], b);
    EXPECT_EQ(qvedSSName(ss, 1, nth), QV_ERROR);
    EXPECT_EQ(qvedSSName(ss, -1, nth), QV_ERROR);
    EXPECT_EQ(qvedSSAdd(ss, ss, same), QV_ERROR) << "a set is not an entity";

    ASSERT_EQ(qvedSSFree(ss), QV_NORM);
    EXPECT_EQ(qvedSSLength(ss, &length), QV_ERROR);
    EXPECT_EQ(qvedSSFree(ss), QV_ERROR);
    EXPECT_EQ(qvedSSAdd(eb, ss, same), QV_ERROR);

    // A new set holding one entity; erased entities cannot join.
    qv_name one = {0, 0};
    ASSERT_EQ(qvedSSAdd(ea, nullptr, one), QV_NORM);
    EXPECT_EQ(members(one), Found{a});
    ASSERT_EQ(qvdbEntDel(eb), QV_NORM);
    EXPECT_EQ(qvedSSAdd(eb, nullptr, one), QV_ERROR);
}

TEST_F(SelectionTest, SetsOfAClosedDrawingAreStale) {
    line(0, 0, 1, 0);
    qv_name ss = {0, 0};
    ASSERT_EQ(qvedSSGet("X", nullptr, nullptr, nullptr, ss), QV_NORM);
    auto other = qvad::db::newDrawing();
    qvad::api::HostSession::current().setDrawing(other.get());
    long length = 0;
    EXPECT_EQ(qvedSSLength(ss, &length), QV_ERROR);
    qvad::api::HostSession::current().setDrawing(db.get());
    EXPECT_EQ(qvedSSLength(ss, &length), QV_ERROR) << "not even when a drawing comes back";
}

TEST_F(SelectionTest, PickFirstPreviousAndLast) {
    const long long a = line(0, 0, 1, 0), b = line(5, 0, 6, 0);
    qv_name ss = {0, 0};
    EXPECT_EQ(qvedSSGet("I", nullptr, nullptr, nullptr, ss), QV_ERROR) << "nothing was picked first";
    EXPECT_EQ(qvedSSGet("P", nullptr, nullptr, nullptr, ss), QV_ERROR);

    EXPECT_EQ(window(false, -1, -1, 2, 1), Found{a});
    ASSERT_EQ(qvedSSGet("P", nullptr, nullptr, nullptr, ss), QV_NORM);
    EXPECT_EQ(members(ss), Found{a});

    ASSERT_EQ(qvedSSGet("X", nullptr, nullptr, nullptr, ss), QV_NORM);
    ASSERT_EQ(qvedSSSetFirst(nullptr, ss), QV_NORM);
    qvedSSFree(ss);
    ASSERT_EQ(qvedSSGet("_I", nullptr, nullptr, nullptr, ss), QV_NORM);
    EXPECT_EQ(members(ss), (Found{a, b}));
    qv_name eb = {0, 0};
    qvdbEntLast(eb);
    qvdbEntDel(eb);
    ASSERT_EQ(qvedSSGet("I", nullptr, nullptr, nullptr, ss), QV_NORM);
    EXPECT_EQ(members(ss), Found{a}) << "erased entities leave the pick-first set";
    ASSERT_EQ(qvedSSSetFirst(nullptr, nullptr), QV_NORM);
    EXPECT_EQ(qvedSSGet("I", nullptr, nullptr, nullptr, ss), QV_ERROR);

    ASSERT_EQ(qvedSSGet("L", nullptr, nullptr, nullptr, ss), QV_NORM);
    EXPECT_EQ(members(ss), Found{a}) << "the last entity that is not erased";
    const qv_real p[3] = {0, 9, 0}, q[3] = {1, 9, 0};
    make(QV_RTDXF0, "LINE", 67, 1, 10, p, 11, q);
    ASSERT_EQ(qvedSSGet("L", nullptr, nullptr, nullptr, ss), QV_NORM);
    EXPECT_EQ(members(ss), Found{a}) << "paper space is not current";
}

qv_resbuf* pointList(std::initializer_list<std::pair<double, double>> points) {
    qv_resbuf* head = nullptr;
    qv_resbuf** tail = &head;
    for (auto [x, y] : points) {
        *tail = qvutNewRb(QV_RTPOINT);
        (*tail)->resval.rpoint[0] = x;
        (*tail)->resval.rpoint[1] = y;
        tail = &(*tail)->rbnext;
    }
    return head;
}

TEST_F(SelectionTest, FencesAndPolygons) {
    const long long a = line(0, 0, 2, 0), b = line(10, 0, 12, 0), c = circle(20, 0, 1);
    auto run = [&](const char* mode, qv_resbuf* points) {
        qv_name ss = {0, 0};
        const int status = qvedSSGet(mode, points, nullptr, nullptr, ss);
        qvutRelRb(points);
        return status == QV_NORM ? members(ss) : Found{};
    };
    EXPECT_EQ(run("F", pointList({{1, -1}, {1, 1}, {11, 1}, {11, -1}})), (Found{a, b}));
    EXPECT_EQ(run("F", pointList({{5, -1}, {5, 1}})), Found{});
    // A triangle around the first line and half of the second.
    EXPECT_EQ(run("WP", pointList({{-2, -1}, {12, -1}, {5, 5}})), Found{a});
    EXPECT_EQ(run("CP", pointList({{-2, -1}, {12, -1}, {5, 5}})), (Found{a, b}));
    EXPECT_EQ(run("CP", pointList({{19, -2}, {25, -2}, {25, 2}, {19, 2}})), Found{c});

    qv_name ss = {0, 0};
    qv_resbuf* bowTie = pointList({{0, 0}, {4, 4}, {4, 0}, {0, 4}});
    EXPECT_EQ(qvedSSGet("WP", bowTie, nullptr, nullptr, ss), QV_ERROR);
    qvutRelRb(bowTie);
    qv_resbuf* mixed = qvutBuildList(QV_RTPOINT, std::array<qv_real, 3>{0, 0, 0}.data(), QV_RTSTR, "x", 0);
    EXPECT_EQ(qvedSSGet("F", mixed, nullptr, nullptr, ss), QV_ERROR);
    qvutRelRb(mixed);
    EXPECT_EQ(qvedSSGet("F", nullptr, nullptr, nullptr, ss), QV_ERROR);
    EXPECT_EQ(qvedSSGet("W", nullptr, nullptr, nullptr, ss), QV_ERROR);
    EXPECT_EQ(qvedSSGet("Q", nullptr, nullptr, nullptr, ss), QV_ERROR);
    EXPECT_NE(console.shown.find("Unknown selection mode"), std::string::npos);
}

} // namespace
