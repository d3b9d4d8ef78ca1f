// The circle index built in one go after reading must be the index adding the circles one by one
// makes: the circle pass erases in the index's order, so any difference changes which circle survives.

#include "overkill_test_drawing.h"

#include <gtest/gtest.h>
#include <random>

namespace qvtd::overkill::testing {
namespace {

std::vector<CircleRecord> randomCircles(std::uint32_t seed, int count, double tolerance) {
    std::mt19937 dice(seed);
    std::uniform_int_distribution<int> pick(0, 5);
    std::uniform_real_distribution<double> coordinate(-50, 50);
    const double radii[] = {1.0, 1.0 + tolerance * 0.4, 1.0 + tolerance * 3, 2.5, 1e6, 0.0};
    const char* layers[] = {"0", "Walls", "walls", "A", "B-long layer name beyond a short string", "b"};
    std::vector<CircleRecord> circles;
    for (int k = 0; k < count; ++k) {
        CircleRecord circle = makeCircle(static_cast<ObjectKey>(k + 1),
                                         {coordinate(dice), coordinate(dice), 0}, radii[pick(dice)]);
        circle.layerName = layers[pick(dice)];
        circles.push_back(circle);
    }
    return circles;
}

TEST(OverkillCircleIndex, BuiltAtOnceEqualsAddedOneByOne) {
    for (double tolerance : {1e-6, 0.5, 0.0}) {
        OverkillRun oneByOne, atOnce;
        oneByOne.settings.tolerance = atOnce.settings.tolerance = tolerance;
        const std::vector<CircleRecord> circles = randomCircles(7, 400, tolerance);
        for (const CircleRecord& circle : circles) addCircle(oneByOne, circle);
        atOnce.circles = circles;
        buildCircleIndex(atOnce);

        ASSERT_EQ(atOnce.circleIndex.size(), oneByOne.circleIndex.size()) << tolerance;
        for (const auto& [key, byLayer] : oneByOne.circleIndex) {
            ASSERT_TRUE(atOnce.circleIndex.count(key)) << key;
            const auto& built = atOnce.circleIndex.at(key);
            ASSERT_EQ(built.size(), byLayer.size());
            for (const auto& [layer, entries] : byLayer) {
                ASSERT_TRUE(built.count(layer)) << layer;
                const auto& builtEntries = built.at(layer);
                ASSERT_EQ(builtEntries.size(), entries.size());
                for (std::size_t i = 0; i < entries.size(); ++i) {
                    EXPECT_EQ(builtEntries[i].key, entries[i].key);
                    EXPECT_EQ(builtEntries[i].record, entries[i].record);
                    EXPECT_TRUE(builtEntries[i].center.isEqualTo(entries[i].center, OdGeTol(0.0)));
                }
            }
        }
    }
}

TEST(OverkillCircleIndex, RebuildingReplacesWhatWasThere) {
    OverkillRun run;
    run.circles = randomCircles(3, 50, 1e-6);
    buildCircleIndex(run);
    run.circles.resize(10);
    buildCircleIndex(run);
    std::size_t entries = 0;
    for (const auto& [key, byLayer] : run.circleIndex)
        for (const auto& [layer, list] : byLayer)
            for (const CircleEntry& entry : list) {
                ++entries;
                EXPECT_LT(entry.record, 10u);
            }
    EXPECT_EQ(entries, 10u);
}

} // namespace
} // namespace qvtd::overkill::testing
