#include "ContainerKinds.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

// A key with a tag that the ordering ignores, so stability is visible; it also counts how it is moved.
struct Tagged {
    static inline long moves = 0;
    static inline long copies = 0;

    int key = 0;
    int tag = 0;

    Tagged() = default;
    Tagged(int k, int t) : key(k), tag(t) {}
    Tagged(const Tagged& o) : key(o.key), tag(o.tag) { ++copies; }
    Tagged(Tagged&& o) noexcept : key(o.key), tag(o.tag) { ++moves; }
    Tagged& operator=(const Tagged& o) {
        key = o.key;
        tag = o.tag;
        ++copies;
        return *this;
    }
    Tagged& operator=(Tagged&& o) noexcept {
        key = o.key;
        tag = o.tag;
        ++moves;
        return *this;
    }
    bool operator==(const Tagged& o) const { return key == o.key && tag == o.tag; }
    bool operator<(const Tagged& o) const { return key < o.key; }
};

int ByKeyDescending(const Tagged& a, const Tagged& b) {
    return b.key - a.key;
}

// The pairwise rank sort, written out literally: the reference every sort must reproduce.
template <class Before> std::vector<long> ReferenceRanks(const std::vector<Tagged>& v, Before before) {
    const long n = static_cast<long>(v.size());
    std::vector<long> rank(v.size());
    for (long i = 0; i < n; ++i) rank[i] = i;
    for (long i = 0; i < n; ++i) {
        for (long j = i + 1; j < n; ++j) {
            if (before(v[j], v[i])) {
                ++rank[i];
                --rank[j];
            }
        }
    }
    return rank;
}

template <class Before> std::vector<Tagged> ReferenceSort(const std::vector<Tagged>& v, Before before) {
    const std::vector<long> rank = ReferenceRanks(v, before);
    std::vector<Tagged> out(v.size());
    for (size_t i = 0; i < v.size(); ++i) out[rank[i]] = v[i];
    return out;
}

// Moving each element once along the permutation's cycles costs length + 1 moves per cycle.
long MovesForCycles(const std::vector<long>& rank) {
    std::vector<bool> seen(rank.size());
    long moves = 0;
    for (size_t start = 0; start < rank.size(); ++start) {
        if (seen[start] || rank[start] == static_cast<long>(start)) continue;
        long length = 0;
        for (size_t i = start; !seen[i]; i = rank[i]) {
            seen[i] = true;
            ++length;
        }
        moves += length + 1;
    }
    return moves;
}

std::vector<Tagged> RandomTagged(unsigned seed, int count, int distinctKeys) {
    std::mt19937 rng(seed);
    std::vector<Tagged> v;
    for (int i = 0; i < count; ++i) v.emplace_back(static_cast<int>(rng() % distinctKeys), i);
    return v;
}

} // namespace

template <class Container> class SortTest : public ::testing::Test {};
TYPED_TEST_SUITE(SortTest, ValueContainerKinds<Tagged>);

TYPED_TEST(SortTest, EqualElementsKeepTheirOrderInBothDirections) {
    TypeParam c;
    Fill<Tagged>(c, {{3, 0}, {1, 1}, {3, 2}, {2, 3}});
    c.Sort(true);
    EXPECT_EQ(ContentsOf<Tagged>(c), (std::vector<Tagged>{{1, 1}, {2, 3}, {3, 0}, {3, 2}}));
    c.Sort(false);
    EXPECT_EQ(ContentsOf<Tagged>(c), (std::vector<Tagged>{{3, 0}, {3, 2}, {2, 3}, {1, 1}}));
}

TYPED_TEST(SortTest, CallbackSortIsStable) {
    TypeParam c;
    Fill<Tagged>(c, {{1, 0}, {5, 1}, {1, 2}, {5, 3}, {3, 4}});
    c.Sort(&ByKeyDescending);
    EXPECT_EQ(ContentsOf<Tagged>(c), (std::vector<Tagged>{{5, 1}, {5, 3}, {3, 4}, {1, 0}, {1, 2}}));
    c.Sort(nullptr); // no comparison: nothing to do
    EXPECT_EQ(c.GetAt(0), Tagged(5, 1));
}

TYPED_TEST(SortTest, MatchesThePairwiseRankSortOnRandomDataWithManyEqualKeys) {
    for (unsigned seed : {1u, 2u, 3u}) {
        const std::vector<Tagged> input = RandomTagged(seed, 700, 9);
        auto ascending = [](const Tagged& a, const Tagged& b) { return a < b; };
        auto descending = [](const Tagged& a, const Tagged& b) { return b < a; };
        auto callback = [](const Tagged& a, const Tagged& b) { return ByKeyDescending(a, b) < 0; };

        TypeParam up, down, byCallback;
        Fill(up, input);
        Fill(down, input);
        Fill(byCallback, input);
        up.Sort(true);
        down.Sort(false);
        byCallback.Sort(&ByKeyDescending);
        EXPECT_EQ(ContentsOf<Tagged>(up), ReferenceSort(input, ascending)) << "seed " << seed;
        EXPECT_EQ(ContentsOf<Tagged>(down), ReferenceSort(input, descending)) << "seed " << seed;
        EXPECT_EQ(ContentsOf<Tagged>(byCallback), ReferenceSort(input, callback)) << "seed " << seed;
    }
}

TYPED_TEST(SortTest, MovesEveryElementOnceAndNeverCopies) {
    const std::vector<Tagged> input = RandomTagged(7, 500, 40);
    TypeParam c;
    Fill(c, input);
    Tagged::moves = Tagged::copies = 0;
    c.Sort(true);
    EXPECT_EQ(Tagged::copies, 0);
    EXPECT_EQ(Tagged::moves,
              MovesForCycles(ReferenceRanks(input, [](const Tagged& a, const Tagged& b) { return a < b; })));
}

TYPED_TEST(SortTest, ShortContainersAndTheCursorAreLeftAlone) {
    TypeParam c;
    c.Sort(true);
    c.Append({4, 0});
    Tagged::moves = Tagged::copies = 0;
    c.Sort(false);
    EXPECT_EQ(Tagged::moves + Tagged::copies, 0);
    Fill<Tagged>(c, {{2, 1}, {1, 2}});
    c.MoveTo(2);
    c.Sort(true);
    EXPECT_EQ(c.GetCurIndex(), 2) << "the cursor keeps its index and sees what moved there";
    EXPECT_EQ(c.GetCurData(), Tagged(4, 0));
}

template <class Container> class UnorderedSortTest : public ::testing::Test {};
TYPED_TEST_SUITE(UnorderedSortTest, ValueContainerKinds<double>);

TYPED_TEST(UnorderedSortTest, AComparisonThatIsNoOrderStillYieldsAPermutation) {
    // With NaN, operator< is not a strict weak order; the pairwise rank count would not even be a
    // permutation. The sort must still neither lose nor duplicate an element.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> input;
    std::mt19937 rng(5);
    for (int i = 0; i < 300; ++i) input.push_back(rng() % 5 == 0 ? nan : static_cast<double>(rng() % 50));
    TypeParam c;
    Fill(c, input);
    c.Sort(true);
    std::vector<double> result;
    for (double* e = c.GetFirst(); e; e = c.GetNext(e)) result.push_back(*e);
    auto nanLast = [](double a, double b) {
        return std::isnan(b) ? !std::isnan(a) : (!std::isnan(a) && a < b);
    };
    std::sort(input.begin(), input.end(), nanLast);
    std::sort(result.begin(), result.end(), nanLast);
    ASSERT_EQ(result.size(), input.size());
    for (size_t i = 0; i < input.size(); ++i) {
        EXPECT_TRUE(result[i] == input[i] || (std::isnan(result[i]) && std::isnan(input[i])));
    }
}
