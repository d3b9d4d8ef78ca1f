#include "ContainerKinds.h"

#include <gtest/gtest.h>
#include <vector>

template <class Container> class ListTest : public ::testing::Test {};
TYPED_TEST_SUITE(ListTest, ListKinds<int>);

using Ints = std::vector<int>;

TYPED_TEST(ListTest, ConstructionGrowsWithDefaultsAndNeverShrinks) {
    QvList<int> five(5);
    EXPECT_EQ(ContentsOf<int>(five), Ints(5, 0));
    TypeParam c;
    Fill<int>(c, {1, 2, 3});
    c.MoveTo(1);
    c.IncreaseSize(2);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{1, 2, 3, 0, 0}));
    EXPECT_EQ(c.GetCurIndex(), 1);
    c.DecreaseSize(4);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{1}));
    EXPECT_TRUE(c.IsOut());
}

TYPED_TEST(ListTest, InsertAfterCurFollowsTheCursorAndStartsAtTheHeadWhenOut) {
    TypeParam c;
    c.InsertAfterCur(2);
    c.InsertAfterCur(3);
    c.MoveTo(-1);
    c.InsertAfterCur(1);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{1, 2, 3}));
    EXPECT_EQ(c.GetCurIndex(), 0);
    c.MoveToLast();
    c.InsertAfterCur(4);
    EXPECT_TRUE(c.IsEnd());
    c.Append(5);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{1, 2, 3, 4, 5}));
}

TYPED_TEST(ListTest, DetachingCutsAfterThePosition) {
    TypeParam c;
    Fill<int>(c, {0, 1, 2, 3, 4, 5, 6});
    c.MoveTo(-1);
    c.DetachAfterCur();
    EXPECT_EQ(c.GetLength(), 7) << "with the cursor out there is nothing to cut after";
    c.MoveTo(5);
    c.DetachAfterCur();
    EXPECT_EQ(ContentsOf<int>(c), (Ints{0, 1, 2, 3, 4, 5}));
    EXPECT_TRUE(c.IsEnd());
    c.Append(9);
    EXPECT_EQ(*c.GetLast(), 9) << "the tail moved with the cut";
    c.MoveTo(1);
    c.DetachAfter(3);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{0, 1, 2, 3}));
    EXPECT_EQ(c.GetCurData(), 1);
    c.MoveTo(3);
    c.DetachAfter(1);
    EXPECT_TRUE(c.IsOut());
    c.Detach();
    EXPECT_TRUE(c.IsEmpty());
}

TYPED_TEST(ListTest, ConbineSplicesTheOtherListInAndEmptiesIt) {
    TypeParam c, other;
    Fill<int>(c, {0, 1, 2});
    Fill<int>(other, {7, 8});
    c.MoveTo(2);
    EXPECT_EQ(c.Conbine(other, 1), 5);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{0, 7, 8, 1, 2}));
    EXPECT_EQ(c.GetCurData(), 2);
    EXPECT_TRUE(other.IsEmpty());
    EXPECT_TRUE(other.IsOut());
    Fill<int>(other, {9});
    EXPECT_EQ(c.Conbine(other, 99), 6) << "an out-of-range position appends";
    Fill<int>(other, {-1});
    c.Conbine(other, 0);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{-1, 0, 7, 8, 1, 2, 9}));
    other.Append(3);
    other.Conbine(other, 0);
    EXPECT_EQ(ContentsOf<int>(other), (Ints{3}));
}

TYPED_TEST(ListTest, ConbineAndSplitAtCarryValuesBetweenListsOfAnotherShape) {
    TypeParam c;
    QvList<int> single;
    QvDList<int> twin;
    Fill<int>(c, {1, 2, 3, 4});
    Fill<int>(single, {5, 6});
    Fill<int>(twin, {7});
    c.Conbine(single, 2);
    c.Conbine(twin, 0);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{7, 1, 2, 5, 6, 3, 4}));
    EXPECT_TRUE(single.IsEmpty());
    EXPECT_TRUE(twin.IsEmpty());

    c.SplitAt(5, single);
    c.SplitAt(3, twin);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{7, 1, 2}));
    EXPECT_EQ(ContentsOf<int>(single), (Ints{3, 4}));
    EXPECT_EQ(ContentsOf<int>(twin), (Ints{5, 6}));
    single.Append(10);
    twin.Append(11);
    EXPECT_EQ(*single.GetLast(), 10);
    EXPECT_EQ(*twin.GetLast(), 11);
}

TYPED_TEST(ListTest, SplitAtMovesTheTailAndReplacesTheReceiver) {
    TypeParam c, out;
    Fill<int>(c, {0, 1, 2, 3, 4});
    Fill<int>(out, {42});
    c.MoveTo(4);
    c.SplitAt(2, out);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{0, 1}));
    EXPECT_EQ(ContentsOf<int>(out), (Ints{2, 3, 4}));
    EXPECT_TRUE(c.IsOut()) << "the cursor's element moved away";
    c.Append(5);
    out.MoveTo(1);
    out.SplitAtCur(c);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{3, 4}));
    EXPECT_EQ(ContentsOf<int>(out), (Ints{2}));
    out.SplitAt(0, c);
    EXPECT_TRUE(out.IsEmpty());
    EXPECT_EQ(ContentsOf<int>(c), (Ints{2}));
}

TYPED_TEST(ListTest, ReverseListTurnsTheChainAndTheCursorStaysOnItsElement) {
    TypeParam c;
    Fill<int>(c, {0, 1, 2, 3, 4});
    c.MoveTo(1);
    c.ReverseList();
    EXPECT_EQ(ContentsOf<int>(c), (Ints{4, 3, 2, 1, 0}));
    EXPECT_EQ(c.GetCurIndex(), 3);
    EXPECT_EQ(c.GetCurData(), 1);
    c.Append(-1);
    EXPECT_EQ(*c.GetLast(), -1);
}

TYPED_TEST(ListTest, RotateBringsTheMiddleElementForward) {
    TypeParam c;
    Fill<int>(c, {0, 1, 2, 3, 4, 5});
    c.MoveTo(4);
    c.Rotate(0, 2);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{2, 3, 4, 5, 0, 1}));
    EXPECT_EQ(c.GetCurData(), 4);
    c.Rotate(3, 5);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{2, 3, 4, 1, 5, 0}));
    c.Rotate(2, 2);
    c.Rotate(4, 6);
    c.Rotate(-1, 3);
    EXPECT_EQ(ContentsOf<int>(c), (Ints{2, 3, 4, 1, 5, 0}));
    c.Append(9);
    EXPECT_EQ(*c.GetLast(), 9);
}

TYPED_TEST(ListTest, CopiesAreDeepAndKeepTheCursor) {
    TypeParam c;
    Fill<int>(c, {1, 2, 3});
    c.MoveTo(2);
    TypeParam copy(c);
    QvDynArray<int> array(c);
    c[0] = 100;
    EXPECT_EQ(ContentsOf<int>(copy), (Ints{1, 2, 3}));
    EXPECT_EQ(copy.GetCurIndex(), 2);
    EXPECT_EQ(ContentsOf<int>(array), (Ints{1, 2, 3}));
    copy = array;
    EXPECT_TRUE(copy == array);
    copy = c;
    EXPECT_EQ(copy.GetAt(0), 100);
}
