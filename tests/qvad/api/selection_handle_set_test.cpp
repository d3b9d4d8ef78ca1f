// The handle set answers as an ordinary set through any mix of insertions and removals, runs of
// neighbouring handles and the null handle included.

#include "qvad/api/selection_handle_set.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

using qvad::api::HandleSet;

TEST(HandleSet, AgreesWithAnOrdinarySetThroughRandomEdits) {
    HandleSet set;
    std::set<qvad::Handle> model;
    std::mt19937_64 random(7);
    // Few distinct handles, so that removals hit and runs of slots form and break up.
    std::uniform_int_distribution<qvad::Handle> pick(0, 3000);
    for (int step = 0; step < 200000; ++step) {
        const qvad::Handle h = pick(random);
        if (random() % 3 == 0)
            ASSERT_EQ(set.erase(h), model.erase(h) == 1) << "erase " << h << " at step " << step;
        else
            ASSERT_EQ(set.insert(h), model.insert(h).second) << "insert " << h << " at step " << step;
        ASSERT_EQ(set.size(), model.size());
    }
    for (qvad::Handle h = 0; h <= 3001; ++h) ASSERT_EQ(set.contains(h), model.count(h) == 1) << h;
}

TEST(HandleSet, EmptiedAndClearedSetsHoldNothing) {
    HandleSet set;
    EXPECT_FALSE(set.contains(0));
    EXPECT_FALSE(set.erase(5));
    for (qvad::Handle h = 1; h <= 1000; ++h) set.insert(h * 4096); // handles that share low bits
    for (qvad::Handle h = 1; h <= 1000; h += 2) EXPECT_TRUE(set.erase(h * 4096));
    for (qvad::Handle h = 1; h <= 1000; ++h) EXPECT_EQ(set.contains(h * 4096), h % 2 == 0) << h;
    set.clear();
    EXPECT_EQ(set.size(), 0u);
    EXPECT_FALSE(set.contains(2 * 4096));
    EXPECT_TRUE(set.insert(2 * 4096));
    EXPECT_FALSE(set.insert(2 * 4096));
}

} // namespace
