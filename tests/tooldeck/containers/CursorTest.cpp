#include "ContainerKinds.h"

#include <gtest/gtest.h>
#include <vector>

template <class Container> class CursorTest : public ::testing::Test {};
TYPED_TEST_SUITE(CursorTest, ValueContainerKinds<int>);

TYPED_TEST(CursorTest, EmptyContainerIgnoresCursorOperations) {
    TypeParam c;
    EXPECT_TRUE(c.IsOut());
    EXPECT_EQ(c.GetCurIndex(), -1);
    c.MoveToFirst();
    EXPECT_TRUE(c.IsOut());
    c.MoveToLast();
    EXPECT_TRUE(c.IsOut());
    c.MoveToNext();
    c.MoveToPre();
    c.MoveTo(0);
    EXPECT_TRUE(c.IsOut());
    EXPECT_FALSE(c.IsBegin());
    EXPECT_FALSE(c.IsEnd());
    EXPECT_EQ(c.GetTo(0), nullptr);
    EXPECT_EQ(c.GetFirst(), nullptr);
    EXPECT_EQ(c.GetLast(), nullptr);

    c.SetCurData(7);
    c.DelCur();
    c.GetCurData() = 9; // writes into a stand-in, never into the container
    c[3] = 5;
    EXPECT_EQ(c.GetLength(), 0);
    EXPECT_EQ(c.GetCurData(), 0);
    EXPECT_EQ(c.GetAt(0), 0);
}

TYPED_TEST(CursorTest, LeavingEitherEndMakesTheCursorOutAndItStaysOut) {
    TypeParam c;
    Fill<int>(c, {10, 20, 30});
    c.MoveToLast();
    EXPECT_TRUE(c.IsEnd());
    EXPECT_EQ(c.GetCurData(), 30);
    c.MoveToNext();
    EXPECT_TRUE(c.IsOut());
    c.MoveToNext();
    EXPECT_TRUE(c.IsOut());
    c.MoveToPre();
    EXPECT_TRUE(c.IsOut()) << "no wrap-around from -1";

    c.MoveToFirst();
    EXPECT_TRUE(c.IsBegin());
    c.MoveToPre();
    EXPECT_TRUE(c.IsOut());
    EXPECT_EQ(c.GetCurIndex(), -1);

    c.MoveTo(3);
    EXPECT_TRUE(c.IsOut());
    c.MoveTo(-2);
    EXPECT_TRUE(c.IsOut());
}

TYPED_TEST(CursorTest, StepsVisitEveryElementInBothDirections) {
    TypeParam c;
    Fill<int>(c, {1, 2, 3, 4, 5, 6, 7});
    std::vector<int> seen;
    for (c.MoveToFirst(); !c.IsOut(); c.MoveToNext()) seen.push_back(c.GetCurData());
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3, 4, 5, 6, 7}));
    seen.clear();
    for (c.MoveToLast(); !c.IsOut(); c.MoveToPre()) seen.push_back(c.GetCurData());
    EXPECT_EQ(seen, (std::vector<int>{7, 6, 5, 4, 3, 2, 1}));
}

TYPED_TEST(CursorTest, PointerWalksLeaveTheCursorAlone) {
    TypeParam c;
    Fill<int>(c, {1, 2, 3});
    c.MoveTo(1);
    int* first = c.GetFirst();
    EXPECT_EQ(*first, 1);
    EXPECT_EQ(c.GetPre(first), nullptr);
    EXPECT_EQ(*c.GetNext(first), 2);
    EXPECT_EQ(c.GetNext(c.GetLast()), nullptr);
    EXPECT_EQ(*c.GetPre(c.GetLast()), 2);
    EXPECT_EQ(c.GetNext(nullptr), nullptr);
    EXPECT_EQ(c.GetCurIndex(), 1);
}

TYPED_TEST(CursorTest, InsertCurPutsTheValueBeforeTheCursorOrAtTheEndWhenOut) {
    TypeParam c;
    c.InsertCur(5); // empty: cursor is out, so the value is appended
    EXPECT_EQ(c.GetCurIndex(), 0);
    c.InsertCur(4);
    EXPECT_EQ(c.GetCurIndex(), 0);
    EXPECT_EQ(c.GetCurData(), 4);
    c.MoveToNext();
    c.MoveToNext();
    c.InsertCur(6);
    EXPECT_EQ(ContentsOf<int>(c), (std::vector<int>{4, 5, 6}));
    EXPECT_EQ(c.GetCurIndex(), 2);
}

TYPED_TEST(CursorTest, DeletionsKeepTheCursorOnItsElement) {
    TypeParam c;
    Fill<int>(c, {0, 1, 2, 3, 4, 5});
    c.MoveTo(3);
    c.Del(1);
    EXPECT_EQ(c.GetCurIndex(), 2);
    EXPECT_EQ(c.GetCurData(), 3);
    c.Del(4);
    EXPECT_EQ(c.GetCurData(), 3);
    c.DelCur(); // cursor goes to the following element
    EXPECT_EQ(c.GetCurData(), 4);
    c.DelCur(); // that was the last one
    EXPECT_TRUE(c.IsOut());
    EXPECT_EQ(ContentsOf<int>(c), (std::vector<int>{0, 2}));
    EXPECT_FALSE(c.Del(2));
    EXPECT_TRUE(c.DelTail());
    EXPECT_TRUE(c.DelHead());
    EXPECT_FALSE(c.DelHead());
    EXPECT_TRUE(c.IsEmpty());
}
