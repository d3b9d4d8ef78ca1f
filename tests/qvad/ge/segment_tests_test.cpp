// Segment tests in the plane, at the edge cases selection depends on: touching, collinear overlap,
// segments passing through a window with both ends outside, and crossed polygons.

#include "qvad/ge/segment_tests.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using qvad::ge::Window2d;

TEST(SegmentTests, IntersectionIncludesTouchingAndCollinearOverlap) {
    EXPECT_TRUE(qvad::ge::segmentsIntersect({0, 0}, {2, 2}, {0, 2}, {2, 0}));
    EXPECT_FALSE(qvad::ge::segmentsIntersect({0, 0}, {1, 1}, {0, 2}, {0.9, 1.1}));
    EXPECT_TRUE(qvad::ge::segmentsIntersect({0, 0}, {2, 0}, {2, 0}, {3, 5})) << "end on end";
    EXPECT_TRUE(qvad::ge::segmentsIntersect({0, 0}, {4, 0}, {3, 0}, {6, 0})) << "overlap";
    EXPECT_FALSE(qvad::ge::segmentsIntersect({0, 0}, {2, 0}, {3, 0}, {6, 0})) << "collinear apart";
    EXPECT_FALSE(qvad::ge::segmentsIntersect({0, 0}, {2, 0}, {0, 1}, {2, 1})) << "parallel";
}

TEST(SegmentTests, WindowsPointsAndDistances) {
    const Window2d w = Window2d::fromCorners({4, 4}, {0, 0});
    EXPECT_TRUE(w.contains({4, 0}));
    EXPECT_FALSE(w.contains({4.01, 0}));
    EXPECT_TRUE(qvad::ge::segmentTouchesWindow({-1, 2}, {5, 2}, w)) << "passes through, ends outside";
    EXPECT_FALSE(qvad::ge::segmentTouchesWindow({-1, 5}, {5, 6}, w));
    EXPECT_TRUE(qvad::ge::segmentTouchesWindow({-1, 3}, {3, 7}, w)) << "clips a corner";
    EXPECT_DOUBLE_EQ(qvad::ge::distanceToSegment({1, 1}, {0, 0}, {2, 0}), 1.0);
    EXPECT_DOUBLE_EQ(qvad::ge::distanceToSegment({5, 4}, {0, 0}, {2, 0}), 5.0) << "beyond the end";
    EXPECT_DOUBLE_EQ(qvad::ge::distanceToSegment({3, 4}, {0, 0}, {0, 0}), 5.0) << "a lone point";
}

TEST(SegmentTests, PolygonsAndFences) {
    const std::vector<OdGePoint2d> lShape = {{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 4}, {0, 4}};
    EXPECT_TRUE(qvad::ge::pointInPolygon({0.5, 3}, lShape));
    EXPECT_FALSE(qvad::ge::pointInPolygon({3, 3}, lShape)) << "in the notch";
    EXPECT_TRUE(qvad::ge::isSimplePolygon(lShape));
    EXPECT_FALSE(qvad::ge::isSimplePolygon(std::vector<OdGePoint2d>{{0, 0}, {4, 4}, {4, 0}, {0, 4}}));
    EXPECT_FALSE(qvad::ge::isSimplePolygon(std::vector<OdGePoint2d>{{0, 0}, {4, 4}}));
    const std::vector<OdGePoint2d> fence = {{0, 0}, {0, 2}, {2, 2}};
    EXPECT_TRUE(qvad::ge::segmentCrossesPolyline({1, 1}, {1, 3}, fence, false));
    EXPECT_FALSE(qvad::ge::segmentCrossesPolyline({1, 0.5}, {1.5, 1.6}, fence, false))
        << "only the closing edge";
    EXPECT_TRUE(qvad::ge::segmentCrossesPolyline({1, 0.5}, {1.5, 1.6}, fence, true));
}

} // namespace
