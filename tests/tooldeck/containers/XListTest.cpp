#include "ContainerKinds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

// Every position reached through the index must hold the model's value.
void ExpectIndexedMovesMatch(QvXList<int>& list, const std::vector<int>& model, int step) {
    ASSERT_EQ(list.GetLength(), static_cast<long>(model.size())) << "step " << step;
    for (long i = 0; i < list.GetLength(); ++i) {
        list.MoveTo(i);
        ASSERT_EQ(list.GetCurData(), model[i]) << "position " << i << " after step " << step;
        ASSERT_EQ(list.GetAt(i), model[i]);
    }
}

} // namespace

TEST(XListTest, MoveToUsesTheIndexedGroupStart) {
    QvXList<int> list(0, 25, 100);
    for (int i = 0; i < 120; ++i) list.Append(i);
    list.MoveTo(60);
    EXPECT_EQ(list.GetCurData(), 60);
    EXPECT_EQ(list.GetGroupSize(), 25);
    list.MoveTo(120);
    EXPECT_TRUE(list.IsOut());
}

TEST(XListTest, IndexFollowsInsertionsAndDeletionsAnywhere) {
    QvXList<int> list(0, 25, 100);
    std::vector<int> model;
    for (int i = 0; i < 100; ++i) {
        list.Append(i);
        model.push_back(i);
    }
    list.InsertHead(-1);
    model.insert(model.begin(), -1);
    ExpectIndexedMovesMatch(list, model, 0);
    list.Insert(50, -2);
    model.insert(model.begin() + 50, -2);
    list.MoveTo(25);
    list.DelCur();
    model.erase(model.begin() + 25);
    list.MoveTo(74);
    list.InsertCur(-3);
    model.insert(model.begin() + 74, -3);
    list.InsertAfterCur(-4);
    model.insert(model.begin() + 75, -4);
    ExpectIndexedMovesMatch(list, model, 1);
    list.Del(0);
    model.erase(model.begin());
    list.Move(3, 90);
    std::rotate(model.begin() + 3, model.begin() + 4, model.begin() + 91);
    ExpectIndexedMovesMatch(list, model, 2);
}

TEST(XListTest, IndexSurvivesEveryChainOperationInRandomOrder) {
    std::mt19937 rng(99);
    QvXList<int> list(0, 4, 3);
    QvXList<int> spare(0, 7, 2);
    std::vector<int> model;
    for (int step = 0; step < 600; ++step) {
        const long n = static_cast<long>(model.size());
        const long at = static_cast<long>(rng() % (n + 1));
        const int v = static_cast<int>(rng() % 1000);
        switch (rng() % 9) {
        case 0:
        case 1:
            list.Insert(at, v);
            model.insert(model.begin() + at, v);
            break;
        case 2:
            if (n > 0) {
                list.Del(at % n);
                model.erase(model.begin() + at % n);
            }
            break;
        case 3: {
            spare.Reset();
            std::vector<int> added(rng() % 9, v);
            for (int a : added) spare.Append(a);
            list.Conbine(spare, at);
            model.insert(model.begin() + at, added.begin(), added.end());
            break;
        }
        case 4:
            list.ReverseList();
            std::reverse(model.begin(), model.end());
            break;
        case 5:
            if (at + 1 < n) {
                list.Rotate(0, at + 1);
                std::rotate(model.begin(), model.begin() + at + 1, model.end());
            }
            break;
        case 6:
            if (n > 10 && rng() % 3 == 0) {
                list.SplitAt(at, spare);
                model.resize(static_cast<size_t>(at));
            }
            break;
        case 7:
            if (n > 10 && rng() % 3 == 0 && at < n) {
                list.MoveTo(at);
                list.DetachAfterCur();
                model.resize(static_cast<size_t>(at + 1));
            }
            break;
        case 8:
            list.SetLength(at + 3, true);
            model.resize(static_cast<size_t>(at + 3));
            break;
        }
        ExpectIndexedMovesMatch(list, model, step);
    }
}

TEST(XListTest, RebuildingTheIndexLeavesTheCursorAndCopiesKeepTheGroupSize) {
    QvXList<int> list(0, 5, 10);
    for (int i = 0; i < 30; ++i) list.Append(i);
    list.MoveTo(17);
    list.UpdateGroup(0);
    EXPECT_EQ(list.GetCurIndex(), 17);
    EXPECT_EQ(list.GetCurData(), 17);

    QvXList<int> copy(list);
    EXPECT_EQ(copy.GetGroupSize(), 5);
    QvXList<int> wide(0, 50, 10);
    wide = copy;
    EXPECT_EQ(wide.GetGroupSize(), 5);
    for (long i = 0; i < 30; ++i) EXPECT_EQ(wide[i], i);
    wide.Reset();
    wide.Append(8);
    wide.MoveTo(0);
    EXPECT_EQ(wide.GetCurData(), 8);
}
