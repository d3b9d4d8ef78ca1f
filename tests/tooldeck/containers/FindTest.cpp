#include "ContainerKinds.h"
#include "tooldeck/containers/QvGePoint.h"

#include <gtest/gtest.h>
#include <vector>

template <class Container> class FindTest : public ::testing::Test {
protected:
    void SetUp() override { Fill<int>(c, {5, 7, 5, 9, 7, 5}); }
    Container c;
};
TYPED_TEST_SUITE(FindTest, ValueContainerKinds<int>);

TYPED_TEST(FindTest, EndOfMinusOneOrBeyondMeansTheLastIndex) {
    auto& c = this->c;
    EXPECT_EQ(c.Find(9), 3);
    EXPECT_EQ(c.Find(5, 3, -1), 5);
    EXPECT_EQ(c.Find(5, 3, 99), 5);
    EXPECT_EQ(c.Find(5, 3, 4), -1) << "end is inclusive and limits the search";
    EXPECT_EQ(c.Find(9, 0, 3), 3);
    EXPECT_EQ(c.Find(5, 6), -1) << "start beyond the end";
    EXPECT_EQ(c.Find(5, 40), -1);
    EXPECT_EQ(c.Find(7, -3), 1) << "a negative start searches from the head";
    EXPECT_EQ(c.Find(4), -1);
    const QvDynArrayBase<int>& generic = c; // the shared implementation must agree with any shortcut
    EXPECT_EQ(generic.Find(5, 3, 99), 5);
    EXPECT_EQ(generic.Find(5, 3, 4), -1);
    EXPECT_EQ(generic.Find(7, -3), 1);
    EXPECT_EQ(generic.Find(5, 6), -1);
}

TYPED_TEST(FindTest, CollectingFindAppendsEveryHitInRange) {
    auto& c = this->c;
    QvQuene<long> hits;
    hits.Append(-7); // what the queue held stays in front
    EXPECT_EQ(c.Find(5, hits, 1, -1), 2);
    long taken = 0;
    std::vector<long> order;
    while (hits.PopHead(taken)) order.push_back(taken);
    EXPECT_EQ(order, (std::vector<long>{-7, 2, 5}));
    EXPECT_EQ(c.Find(8, hits), -1);
    EXPECT_TRUE(hits.IsEmpty());
}

TYPED_TEST(FindTest, FindToFindDelAndTheConditionalAdds) {
    auto& c = this->c;
    c.MoveTo(0);
    EXPECT_EQ(c.FindTo(7, 2), 4);
    EXPECT_EQ(c.GetCurIndex(), 4);
    EXPECT_EQ(c.FindTo(8), -1);
    EXPECT_EQ(c.GetCurIndex(), 4) << "a miss leaves the cursor";
    EXPECT_EQ(c.FindDel(9), 3);
    EXPECT_EQ(c.FindDel(9), -1);
    EXPECT_EQ(c.FindOrAppend(7), 1);
    EXPECT_EQ(c.FindOrAppend(8), 5);
    EXPECT_EQ(c.FindOrInsertHead(8), 5);
    EXPECT_EQ(c.FindOrInsertHead(1), 0);
    EXPECT_EQ(ContentsOf<int>(c), (std::vector<int>{1, 5, 7, 5, 7, 5, 8}));
}

TYPED_TEST(FindTest, BinarySearchInEitherDirectionWithTheSameEndRule) {
    TypeParam up, down;
    Fill<int>(up, {1, 3, 3, 3, 6, 8, 9});
    Fill<int>(down, {9, 8, 6, 3, 3, 3, 1});
    EXPECT_EQ(up.BFind(3), 1) << "the first of the equal run";
    EXPECT_EQ(down.BFind(3), 3);
    EXPECT_EQ(up.BFind(9, 0, -1), 6);
    EXPECT_EQ(up.BFind(9, 0, 100), 6);
    EXPECT_EQ(up.BFind(9, 0, 5), -1);
    EXPECT_EQ(down.BFind(1, 2), 6);
    EXPECT_EQ(up.BFind(5), -1);
    EXPECT_EQ(up.BFind(0), -1);
    EXPECT_EQ(up.BFind(10), -1);
    EXPECT_EQ(up.BFind(3, 8), -1);
    TypeParam empty;
    EXPECT_EQ(empty.BFind(3), -1);
}

TYPED_TEST(FindTest, BFindToLeavesTheCursorAtTheHitOrTheInsertionPlace) {
    TypeParam up;
    Fill<int>(up, {1, 3, 3, 6});
    EXPECT_EQ(up.BFindTo(3), 1);
    EXPECT_EQ(up.GetCurIndex(), 1);
    EXPECT_EQ(up.BFindTo(5), -1);
    EXPECT_EQ(up.GetCurIndex(), 3);
    EXPECT_EQ(up.BFindTo(0), -1);
    EXPECT_EQ(up.GetCurIndex(), 0);
    EXPECT_EQ(up.BFindTo(7), -1);
    EXPECT_TRUE(up.IsOut()) << "the insertion place is past the last element";
}

TYPED_TEST(FindTest, SortIntoKeepsTheOrderAndArrivalOrderOfEquals) {
    TypeParam up, down;
    for (int v : {4, 1, 4, 9, 0, 4}) {
        up.SortInto(v, true);
        down.SortInto(v, false);
    }
    EXPECT_EQ(ContentsOf<int>(up), (std::vector<int>{0, 1, 4, 4, 4, 9}));
    EXPECT_EQ(ContentsOf<int>(down), (std::vector<int>{9, 4, 4, 4, 1, 0}));
    EXPECT_EQ(up.SortInto(4), 5) << "after the equal ones";
    EXPECT_EQ(up.GetCurIndex(), 5);
}

TEST(PointSearchTest, PointsSortAndSearchLexicographically) {
    QvDynArray<QvGePoint> points(0, 10);
    for (auto p : {QvGePoint(1, 2), QvGePoint(0, 5), QvGePoint(1, 1), QvGePoint(0, 5, 1)}) points.Append(p);
    points.Sort(true);
    EXPECT_EQ(points[0], QvGePoint(0, 5));
    EXPECT_EQ(points[3], QvGePoint(1, 2));
    EXPECT_EQ(points.BFind(QvGePoint(0, 5, 1)), 1);
    EXPECT_EQ(points.BFind(QvGePoint(0, 5, 2)), -1);
    EXPECT_EQ(points.Find(QvGePoint(1, 1)), 2);
    QvDList<QvGePoint> list;
    list.DeepCopy(points);
    EXPECT_TRUE(list == points);
    EXPECT_EQ(list.BFind(QvGePoint(1, 2)), 3);
}
