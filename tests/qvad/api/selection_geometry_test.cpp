// Windows and crossings against the shape of each kind of entity: curves are found by where they run,
// not by their end points, block references by their transformed contents.

#include "qvad/db/OdDbEntity.h"
#include "selection_fixture.h"

#include <numbers>

namespace {

using selection_test::SelectionTest;
using Found = std::set<long long>;

TEST_F(SelectionTest, ArcIsFoundWhereItRunsNotByItsEnds) {
    const qv_real c[3] = {0, 0, 0};
    // Angles cross the C interface in radians.
    const long long arc =
        make(QV_RTDXF0, "ARC", 10, c, 40, 10.0, 50, std::numbers::pi / 4, 51, 3 * std::numbers::pi / 4);
    // Its top (0,10) lies in this small window; both ends (+-7.07, 7.07) lie outside.
    EXPECT_EQ(window(true, -2, 9, 2, 11), Found{arc});
    EXPECT_EQ(window(false, -2, 9, 2, 11), Found{});
    EXPECT_EQ(window(false, -8, 6, 8, 10.5), Found{arc});
    // The ends fit, the top does not.
    EXPECT_EQ(window(false, -8, 6, 8, 9.9), Found{});
}

TEST_F(SelectionTest, CircleNeedsAnEdgeInACrossing) {
    const long long ring = circle(0, 0, 5);
    EXPECT_EQ(window(true, -1, -1, 1, 1), Found{}) << "a crossing wholly inside the circle meets no edge";
    EXPECT_EQ(window(true, 4, -1, 6, 1), Found{ring});
    EXPECT_EQ(window(false, -5.1, -5.1, 5.1, 5.1), Found{ring});
    EXPECT_EQ(window(false, -5.1, -5.1, 5.1, 4.9), Found{});
}

TEST_F(SelectionTest, PolylineBulgeSwingsBelowItsChord) {
    const qv_real p0[3] = {0, 0, 0}, p1[3] = {10, 0, 0};
    // A positive bulge turns counterclockwise: from (0,0) to (10,0) the half circle passes (5,-5).
    const long long pl = make(QV_RTDXF0, "LWPOLYLINE", 100, "AcDbEntity", 100, "AcDbPolyline", 90, 2, 70, 0,
                              10, p0, 42, 1.0, 10, p1);
    EXPECT_EQ(window(true, 4, -5.5, 6, -4.5), Found{pl});
    EXPECT_EQ(window(true, 4, 4.5, 6, 5.5), Found{});
    EXPECT_EQ(window(false, -1, -1, 11, 1), Found{});
    EXPECT_EQ(window(false, -1, -5.1, 11, 1), Found{pl});
}

TEST_F(SelectionTest, PointsTextAndEndlessLines) {
    const qv_real at[3] = {3, 3, 0}, dir[3] = {1, 1, 0}, origin[3] = {0, 0, 0};
    const long long dot = make(QV_RTDXF0, "POINT", 10, at);
    const long long word = make(QV_RTDXF0, "TEXT", 10, origin, 40, 2.0, 1, "HELLO");
    const long long xline =
        make(QV_RTDXF0, "XLINE", 100, "AcDbEntity", 100, "AcDbXline", 10, origin, 11, dir);
    EXPECT_EQ(window(false, 2.9, 2.9, 3.1, 3.1), Found{dot});
    // The text is about 2 high and a few units long from (0,0).
    EXPECT_EQ(window(false, -0.5, -0.5, 30, 2.5), Found{word});
    EXPECT_EQ(window(false, -0.5, -0.5, 30, 1.0), Found{});
    // An endless line never fits a window but crosses any window on its way.
    EXPECT_EQ(window(false, -1e6, -1e6, 1e6, 1e6).count(xline), 0u);
    EXPECT_EQ(window(true, 99, 99.5, 101, 100.5), Found{xline});
}

TEST_F(SelectionTest, BlockReferenceIsItsRotatedScaledContents) {
    loadR12(R"(0 BLOCK
               8 0
               2 BAR
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
               8 0)",
            R"(0 INSERT
               8 0
               2 BAR
               10 10
               20 10
               30 0
               41 2
               42 2
               43 2
               50 90
               0 INSERT
               8 0
               2 BAR
               10 50
               20 0
               30 0
               50 90
               70 2
               71 1
               44 5)");
    const auto& model = db->modelSpace()->entities();
    ASSERT_EQ(model.size(), 2u);
    const long long single = static_cast<long long>(model[0]->handle());
    const long long array = static_cast<long long>(model[1]->handle());
    // Scaled by 2 and turned a quarter: the bar runs from (10,10) up to (10,12).
    EXPECT_EQ(window(false, 9, 9, 11, 12.5), Found{single});
    EXPECT_EQ(window(false, 9, 9, 13, 11), Found{});
    EXPECT_EQ(window(true, 9.5, 11.5, 10.5, 11.8), Found{single});
    // The array's second column sits 5 along the turned X axis: (50,5) to (50,6).
    EXPECT_EQ(window(true, 49.5, 5.2, 50.5, 5.8), Found{array});
    EXPECT_EQ(window(false, 49, -1, 51, 7), Found{array});
    EXPECT_EQ(window(false, 49, -1, 51, 4), Found{});
}

TEST_F(SelectionTest, HiddenLayersAndOtherSpacesAreLeftToWholeDrawingSelection) {
    const long long onZero = line(0, 0, 1, 0);
    const long long onOther = line(0, 1, 1, 1, "OTHER");
    const qv_real a[3] = {0, 2, 0}, b[3] = {1, 2, 0};
    const long long inPaper = make(QV_RTDXF0, "LINE", 67, 1, 10, a, 11, b);
    EXPECT_EQ(window(false, -1, -1, 2, 3), (Found{onZero, onOther}));
    db->table("LAYER")->find("0")->setInt(70, 1); // frozen
    EXPECT_EQ(window(false, -1, -1, 2, 3), Found{onOther});
    db->table("LAYER")->find("0")->setInt(70, 0);
    db->table("LAYER")->find("0")->setInt(62, -7); // off
    EXPECT_EQ(window(true, -1, -1, 2, 3), Found{onOther});
    EXPECT_EQ(everything(nullptr), (Found{onZero, onOther, inPaper}));
    db->table("LAYER")->find("0")->setInt(62, 7);
    qvad::api::HostSession::current().setPaperSpaceCurrent(true);
    EXPECT_EQ(window(false, -1, -1, 2, 3), Found{inPaper});
    qvad::api::HostSession::current().setPaperSpaceCurrent(false);
}

} // namespace
