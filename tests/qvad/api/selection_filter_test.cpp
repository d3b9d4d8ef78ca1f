// Filter lists on whole-drawing selection: group tests with wildcards and defaults, relational
// operators, logical groupings, extended-data applications, and the lists that are refused.

#include "selection_fixture.h"

namespace {

using Found = std::set<long long>;

class SelectionFilters : public selection_test::SelectionTest {
protected:
    void SetUp() override {
        SelectionTest::SetUp();
        const qv_real a[3] = {0, 0, 0}, b[3] = {10, 0, 0}, c[3] = {6, 7, 0}, d[3] = {9, 9, 0};
        redWall = make(QV_RTDXF0, "LINE", 8, "WALL", 62, 1, 10, a, 11, b);
        wallCircle = make(QV_RTDXF0, "CIRCLE", 8, "WALL", 10, a, 40, 5.0);
        greenDoor = make(QV_RTDXF0, "LINE", 8, "DOOR", 62, 3, 10, c, 11, d);
        smallCircle = make(QV_RTDXF0, "CIRCLE", 8, "Txt", 10, c, 40, 3.0);
        ASSERT_EQ(qvdbRegApp("PLANNER"), QV_NORM);
        const qv_real p0[3] = {0, 0, 0}, p1[3] = {1, 1, 0};
        closedPlain = make(QV_RTDXF0, "LWPOLYLINE", 100, "AcDbEntity", 100, "AcDbPolyline", 90, 2, 70, 1, 10,
                           p0, 10, p1);
        closedGen = make(QV_RTDXF0, "LWPOLYLINE", 8, "DOOR", 100, "AcDbEntity", 100, "AcDbPolyline", 90, 2,
                         70, 129, 10, p0, 10, p1, -3, 1001, "PLANNER", 1000, "room 4");
    }
    Found where(qv_resbuf* filter, int* status = nullptr) {
        Found found = everything(filter, status);
        qvutRelRb(filter);
        return found;
    }
    long long redWall = 0, wallCircle = 0, greenDoor = 0, smallCircle = 0, closedPlain = 0, closedGen = 0;
};

TEST_F(SelectionFilters, GroupTestsTakeWildcardsIgnoreCaseAndKnowDefaults) {
    EXPECT_EQ(where(qvutBuildList(QV_RTDXF0, "line", 0)), (Found{redWall, greenDoor}));
    EXPECT_EQ(where(qvutBuildList(8, "W*", 0)), (Found{redWall, wallCircle}));
    EXPECT_EQ(where(qvutBuildList(8, "wall,txt", 0)), (Found{redWall, wallCircle, smallCircle}));
    EXPECT_EQ(where(qvutBuildList(QV_RTDXF0, "LINE", 8, "WALL", 0)), Found{redWall});
    // No 62 group means BYLAYER (256); no 8 group cannot happen, but layer "0" is the default.
    EXPECT_EQ(where(qvutBuildList(62, 256, 8, "0", 0)), Found{closedPlain});
    EXPECT_EQ(where(qvutBuildList(8, "NOSUCH", 0)), Found{});
}

TEST_F(SelectionFilters, RelationalOperators) {
    auto radius = [&](const char* op, double r) {
        return where(qvutBuildList(QV_RTDXF0, "CIRCLE", -4, op, 40, r, 0));
    };
    EXPECT_EQ(radius(">", 3.0), Found{wallCircle});
    EXPECT_EQ(radius(">=", 3.0), (Found{wallCircle, smallCircle}));
    EXPECT_EQ(radius("<", 5.0), Found{smallCircle});
    EXPECT_EQ(radius("<=", 5.0), (Found{wallCircle, smallCircle}));
    EXPECT_EQ(radius("=", 5.0), Found{wallCircle});
    EXPECT_EQ(radius("*", 0.0), (Found{wallCircle, smallCircle}));
    for (const char* notEqual : {"!=", "/=", "<>"})
        EXPECT_EQ(where(qvutBuildList(QV_RTDXF0, "LINE", -4, notEqual, 8, "WALL", 0)), Found{greenDoor})
            << notEqual;
    EXPECT_EQ(where(qvutBuildList(-4, "&", 70, 128, 0)), Found{closedGen});
    EXPECT_EQ(where(qvutBuildList(-4, "&", 70, 1, 0)), (Found{closedPlain, closedGen}));
    EXPECT_EQ(where(qvutBuildList(-4, "&=", 70, 129, 0)), Found{closedGen});
    EXPECT_EQ(where(qvutBuildList(-4, "&=", 70, 3, 0)), Found{});
    // Per-coordinate operators on a point: lines starting right of 5 and above 5.
    const qv_real five[3] = {5, 5, 0};
    EXPECT_EQ(where(qvutBuildList(QV_RTDXF0, "LINE", -4, ">,>,*", 10, five, 0)), Found{greenDoor});
    EXPECT_EQ(where(qvutBuildList(-4, "<,<,*", 10, five, QV_RTDXF0, "CIRCLE", 0)), Found{wallCircle});
}

TEST_F(SelectionFilters, LogicalGroupings) {
    EXPECT_EQ(where(qvutBuildList(-4, "<OR", 62, 1, 62, 3, -4, "OR>", 0)), (Found{redWall, greenDoor}));
    EXPECT_EQ(where(qvutBuildList(-4, "<AND", QV_RTDXF0, "CIRCLE", 8, "WALL", -4, "AND>", 0)),
              Found{wallCircle});
    EXPECT_EQ(where(qvutBuildList(-4, "<NOT", 8, "WALL,DOOR", -4, "NOT>", 0)),
              (Found{smallCircle, closedPlain}));
    // Either on WALL or a line, not both.
    EXPECT_EQ(where(qvutBuildList(-4, "<xor", 8, "WALL", QV_RTDXF0, "LINE", -4, "xor>", 0)),
              (Found{wallCircle, greenDoor}));
    // Nested: circles, or anything on DOOR that is not a line.
    EXPECT_EQ(where(qvutBuildList(-4, "<OR", QV_RTDXF0, "CIRCLE", -4, "<AND", 8, "DOOR", -4, "<NOT",
                                  QV_RTDXF0, "LINE", -4, "NOT>", -4, "AND>", -4, "OR>", 0)),
              (Found{wallCircle, smallCircle, closedGen}));
}

TEST_F(SelectionFilters, ExtendedDataApplications) {
    EXPECT_EQ(where(qvutBuildList(-3, 1001, "PLANNER", 0)), Found{closedGen});
    EXPECT_EQ(where(qvutBuildList(-3, 1001, "plan*", 0)), Found{closedGen});
    EXPECT_EQ(where(qvutBuildList(-3, 1001, "OTHER", 0)), Found{});
    EXPECT_EQ(where(qvutBuildList(1000, "room*", 0)), Found{closedGen});
}

TEST_F(SelectionFilters, MalformedListsSelectNothingAndSaySo) {
    const std::vector<qv_resbuf*> bad = {
        qvutBuildList(-4, "<AND", 8, "WALL", 0),
        qvutBuildList(8, "WALL", -4, "AND>", 0),
        qvutBuildList(-4, "<OR", 8, "WALL", -4, "AND>", 0),
        qvutBuildList(-4, "<NOT", 8, "WALL", 8, "DOOR", -4, "NOT>", 0),
        qvutBuildList(-4, "<XOR", 8, "WALL", -4, "XOR>", 0),
        qvutBuildList(-4, "<OR", -4, "OR>", 0),
        qvutBuildList(-4, "=>", 40, 1.0, 0),
        qvutBuildList(-4, ">", 0),
        qvutBuildList(-4, ">", -4, "<OR", 8, "A", -4, "OR>", 0),
        qvutBuildList(-4, "&", 8, "WALL", 0),
        qvutBuildList(-4, "&", 40, 1.0, 0),
        qvutBuildList(-4, ">,>", 10, std::array<qv_real, 3>{0, 0, 0}.data(), 0),
        qvutBuildList(-4, ">,>,>", 40, 1.0, 0),
        qvutBuildList(-3, 0),
        qvutBuildList(QV_RTSTR, "stray", 0),
    };
    for (std::size_t i = 0; i < bad.size(); ++i) {
        ASSERT_NE(bad[i], nullptr) << i;
        console.shown.clear();
        int status = 0;
        EXPECT_EQ(where(bad[i], &status), Found{}) << i;
        EXPECT_EQ(status, QV_ERROR) << i;
        EXPECT_NE(console.shown.find("Bad selection filter"), std::string::npos) << i;
    }
}

} // namespace
