// The point grid behind the polyline passes: searches never miss a filed point, wherever the point
// sits against the cube boundaries and however the adding and searching interleave.

#include "tooldeck/commands/cleanup/overkill_point_grid.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace qvtd::overkill::testing {
namespace {

bool holds(std::vector<std::uint32_t> found, std::uint32_t value) {
    return std::find(found.begin(), found.end(), value) != found.end();
}

TEST(OverkillPointGrid, PointsOnAndAroundNegativeCubeBoundariesAreFoundFromEitherSide) {
    // Cubes of 2: -4, -2, 0 and 2 are boundaries, and a truncating floor would file -3.9999 with -2.
    const double cell = 2.0;
    const double tiny = 1e-9;
    const std::vector<double> places = {-4.0, -4.0 + tiny, -4.0 - tiny, -2.0, -2.0 - tiny, -tiny,
                                        0.0,  tiny,        2.0 - tiny,  2.0,  -0.0,        -6.0 + tiny};
    PointGrid grid(cell);
    for (std::uint32_t i = 0; i < places.size(); ++i) grid.add({places[i], -places[i], places[i]}, i);
    for (std::uint32_t i = 0; i < places.size(); ++i) {
        SCOPED_TRACE(places[i]);
        for (double shift : {-2 * tiny, 0.0, 2 * tiny}) {
            const double at = places[i] + shift;
            std::vector<std::uint32_t> found;
            grid.findNearPoint({at, -at, at}, 3 * tiny, found);
            EXPECT_TRUE(holds(found, i)) << "shift " << shift;
            found.clear();
            grid.findNearSegment({at - 0.5, -at, at}, {at + 0.5, -at, at}, 3 * tiny, found);
            EXPECT_TRUE(holds(found, i)) << "segment, shift " << shift;
        }
    }
    // Far from every filed point nothing comes back.
    std::vector<std::uint32_t> found;
    grid.findNearPoint({50, 50, 50}, 1.0, found);
    EXPECT_TRUE(found.empty());
}

TEST(OverkillPointGrid, AddingAfterASearchKeepsEverythingFiledBefore) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> coordinate(-20.0, 20.0);
    PointGrid grid(1.5);
    std::vector<OdGePoint3d> points;
    const auto searchAll = [&](const char* when) {
        for (std::uint32_t i = 0; i < points.size(); ++i) {
            std::vector<std::uint32_t> found;
            grid.findNearPoint(points[i], 1e-6, found);
            ASSERT_TRUE(holds(found, i)) << when << ": point " << i;
        }
    };
    for (int round = 0; round < 4; ++round) {
        for (int k = 0; k < 300; ++k) {
            // Every third point on top of an earlier one, so that cubes hold several values.
            points.push_back(k % 3 == 2 ? points[points.size() / 2]
                                        : OdGePoint3d(coordinate(random), coordinate(random), 0.0));
            grid.add(points.back(), static_cast<std::uint32_t>(points.size() - 1));
        }
        searchAll(round == 0 ? "first filing" : "filed again");
    }
    // Each value comes back from its own place as often as it was added there, and no more.
    std::vector<std::uint32_t> found;
    grid.findNearPoint(points[0], 1e-6, found);
    const auto copies = std::count_if(points.begin(), points.end(), [&](const OdGePoint3d& p) {
        return p.x == points[0].x && p.y == points[0].y;
    });
    EXPECT_EQ(std::count_if(found.begin(), found.end(),
                            [&](std::uint32_t value) { return points[value].isEqualTo(points[0]); }),
              copies);
}

TEST(OverkillPointGrid, PointsThatAreNotNumbersNeitherCrashNorHideOthers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double huge = std::numeric_limits<double>::infinity();
    PointGrid grid(1.0);
    grid.add({nan, 0, 0}, 0);
    grid.add({huge, -huge, 0}, 1);
    grid.add({0.5, 0.5, 0}, 2);
    std::vector<std::uint32_t> found;
    grid.findNearPoint({0.5, 0.5, 0}, 0.1, found);
    EXPECT_TRUE(holds(found, 2));
    found.clear();
    grid.findNearSegment({nan, 0, 0}, {1, 1, 0}, 0.1, found);
    grid.findNearPoint({huge, -huge, 0}, 0.1, found);
    EXPECT_TRUE(holds(found, 1));
}

} // namespace
} // namespace qvtd::overkill::testing
