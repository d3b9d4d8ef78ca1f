// The candidate groups themselves: every pair the line rules relate shares a group, even in a crowd
// of lines that the sweeps alone cannot split.

#include "overkill_test_drawing.h"
#include "tooldeck/commands/cleanup/overkill_candidates.h"
#include "tooldeck/commands/cleanup/overkill_lines.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

namespace qvtd::overkill::testing {
namespace {

// Lines in every direction packed into a small square, with near copies turned slightly and pieces
// continuing each other.
std::vector<LineRecord> crowd(std::uint32_t seed, double e) {
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    std::vector<LineRecord> lines;
    ObjectKey key = 1;
    for (int k = 0; k < 600; ++k) {
        const OdGePoint3d start(unit(engine) * 3, unit(engine) * 3, 0);
        const double angle = unit(engine) * 2 * std::numbers::pi;
        const double length = 0.05 + unit(engine) * (k % 3 == 0 ? 0.001 : 2.0);
        const OdGeVector3d along(std::cos(angle), std::sin(angle), 0);
        lines.push_back(makeLine(key++, start, start + along * length));
        // A near copy whose far end is moved across by up to two tolerances.
        const OdGeVector3d across(-along.y, along.x, 0);
        lines.push_back(makeLine(key++, start + across * (unit(engine) * e),
                                 start + along * length + across * ((unit(engine) * 4 - 2) * e)));
        // A piece continuing it.
        lines.push_back(makeLine(key++, start + along * length, start + along * (length * 2)));
    }
    std::shuffle(lines.begin(), lines.end(), engine);
    return lines;
}

TEST(OverkillCandidates, EveryRelatedPairOfACrowdSharesAGroup) {
    for (double tolerance : {1e-6, 0.001}) {
        SCOPED_TRACE(tolerance);
        OverkillSettings settings;
        settings.tolerance = tolerance;
        const std::vector<LineRecord> lines = crowd(11, tolerance);
        const auto groups = lineCandidateGroups(settings, lines);
        std::vector<int> groupOf(lines.size(), -1);
        std::size_t largest = 0;
        for (std::size_t g = 0; g < groups.size(); ++g) {
            largest = std::max(largest, groups[g].size());
            for (std::size_t k = 0; k < groups[g].size(); ++k) {
                EXPECT_EQ(groupOf[groups[g][k]], -1) << "a line in two groups";
                groupOf[groups[g][k]] = static_cast<int>(g);
                if (k > 0) {
                    EXPECT_LT(groups[g][k - 1], groups[g][k]) << "groups keep list order";
                }
            }
        }
        int related = 0;
        for (std::size_t i = 0; i < lines.size(); ++i)
            for (std::size_t j = i + 1; j < lines.size(); ++j) {
                if (compareLines(settings, lines[i], lines[j]).relation == LineRelation::None) continue;
                ++related;
                EXPECT_TRUE(groupOf[i] >= 0 && groupOf[i] == groupOf[j]) << i << " and " << j;
            }
        EXPECT_GT(related, 600);
        // The crowd is split all the same.
        EXPECT_LT(largest, lines.size() / 10) << groups.size() << " groups";
    }
}

} // namespace
} // namespace qvtd::overkill::testing
