#include "tooldeck/containers/QvContainerInstances.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

template <class T> std::vector<T> Elements(const QvDynArrayBase<T>& c) {
    std::vector<T> out;
    for (const T* e = c.GetFirst(); e; e = c.GetNext(e)) out.push_back(*e);
    return out;
}

} // namespace

TEST(DynArrayTest, GrowthAddsTheAllocUnitBeyondTheNeededSize) {
    QvDynArray<double> a(0, 10);
    EXPECT_EQ(a.GetSpaceSize(), 0);
    a.Append(1.0);
    EXPECT_EQ(a.GetSpaceSize(), 11);
    for (int i = 2; i <= 11; ++i) a.Append(i);
    EXPECT_EQ(a.GetSpaceSize(), 11);
    a.Append(12.0);
    EXPECT_EQ(a.GetSpaceSize(), 22);
    EXPECT_EQ(a.GetLength(), 12);
    EXPECT_EQ(a[11], 12.0);
    EXPECT_EQ(a.GetAllocUnit(), 10);

    QvDynArray<char> sized(4, 3);
    EXPECT_EQ(sized.GetLength(), 4);
    EXPECT_EQ(sized.GetSpaceSize(), 4);
    EXPECT_EQ(Elements(sized), std::vector<char>(4, '\0'));
    sized.SetAllocUnit(0);
    sized.Append('x');
    EXPECT_EQ(sized.GetSpaceSize(), 5);
}

TEST(DynArrayTest, ShrinkingKeepsTheBlockAndRegrowingShowsDefaults) {
    QvDynArray<std::string> a(0, 10);
    for (const char* s : {"a", "b", "c", "d", "e"}) a.Append(s);
    a.ReAllocate(2);
    EXPECT_EQ(a.GetSpaceSize(), 11);
    a.ReAllocate(4);
    EXPECT_EQ(Elements(a), (std::vector<std::string>{"a", "b", "", ""}));
    a.MoveTo(3);
    a.DelTail();
    a.IncreaseSize(1);
    EXPECT_EQ(a[3], "");
}

TEST(DynArrayTest, SetLengthIsExactAndKeepsDataOnlyWhenAsked) {
    QvDynArray<long> a(0, 10);
    for (long i = 1; i <= 8; ++i) a.Append(i);
    a.MoveTo(6);
    a.SetLength(5, true);
    EXPECT_EQ(Elements(a), (std::vector<long>{1, 2, 3, 4, 5}));
    EXPECT_EQ(a.GetSpaceSize(), 5);
    EXPECT_TRUE(a.IsOut());
    a.SetLength(7, true);
    EXPECT_EQ(Elements(a), (std::vector<long>{1, 2, 3, 4, 5, 0, 0}));
    EXPECT_EQ(a.GetSpaceSize(), 7);
    a.MoveTo(2);
    a.SetLength(7, false);
    EXPECT_EQ(Elements(a), std::vector<long>(7, 0)) << "same size, data not kept";
    a.SetLength(3, false);
    EXPECT_EQ(Elements(a), std::vector<long>(3, 0));
    EXPECT_EQ(a.GetCurIndex(), 2);
    a.SetLength(-4, true);
    EXPECT_EQ(a.GetLength(), 0);
    EXPECT_EQ(a.GetSpaceSize(), 0);
    a.Append(3);
    EXPECT_EQ(a.GetSpaceSize(), 11);
}

TEST(DynArrayTest, SpaceSizeAndAttachReplaceTheBlock) {
    QvDynArray<double> a(0, 10);
    for (int i = 0; i < 6; ++i) a.Append(i);
    a.SetSpaceSize(4);
    EXPECT_EQ(Elements(a), (std::vector<double>{0, 1, 2, 3}));
    a.SetSpaceSize(9);
    EXPECT_EQ(a.GetLength(), 4);
    EXPECT_EQ(a.GetSpaceSize(), 9);
    a.Attach(3, new double[3]{7, 8, 9});
    EXPECT_EQ(Elements(a), (std::vector<double>{7, 8, 9}));
    EXPECT_EQ(a.GetSpaceSize(), 3);
    a.Append(10);
    EXPECT_EQ(a.GetSpaceSize(), 14);
}

TEST(DynArrayTest, ValuesFromTheArrayItselfSurviveReallocation) {
    QvDynArray<std::string> a(0, 0);
    a.Append("first");
    a.Append(a[0]);
    a.Insert(0, a[1]);
    a.MoveTo(1);
    a.InsertCur(a[2]);
    EXPECT_EQ(Elements(a), std::vector<std::string>(4, "first"));
    a.DeepCopy(a);
    a << a;
    EXPECT_EQ(a.GetLength(), 8);
}

TEST(DynArrayTest, ForeignPointersEndAWalk) {
    QvDynArray<double> a(0, 10), b(0, 10);
    a.Append(1);
    b.Append(2);
    b.Append(3);
    EXPECT_EQ(a.GetNext(b.GetFirst()), nullptr);
    EXPECT_EQ(a.GetPre(b.GetLast()), nullptr);
}

TEST(DynArrayTest, RangeCopiesComparisonsAndFill) {
    QvDynArray<char> text(0, 10), part(0, 10);
    text.DeepCopy("abcdef", 6);
    text.Left(2, part);
    EXPECT_EQ(Elements(part), (std::vector<char>{'a', 'b'}));
    text.Right(3, part);
    EXPECT_EQ(Elements(part), (std::vector<char>{'d', 'e', 'f'}));
    text.Mid(4, -1, part);
    EXPECT_EQ(Elements(part), (std::vector<char>{'e', 'f'}));
    text.Mid(1, 2, part);
    EXPECT_EQ(Elements(part), (std::vector<char>{'b', 'c'}));
    text.Right(10, part);
    EXPECT_TRUE(part == text);
    part << 'g';
    EXPECT_TRUE(text < part);
    EXPECT_TRUE(part > text);
    EXPECT_TRUE(part != text);
    part.SetAll('z');
    EXPECT_EQ(Elements(part), std::vector<char>(7, 'z'));
    EXPECT_TRUE(text < part);
}
