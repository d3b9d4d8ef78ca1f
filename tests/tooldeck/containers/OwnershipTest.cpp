#include "ContainerKinds.h"
#include "TrackedObject.h"
#include "tooldeck/containers/QvDynPArray.h"
#include "tooldeck/containers/QvPDList.h"
#include "tooldeck/containers/QvPXList.h"

#include <gtest/gtest.h>
#include <vector>

// Every member of the owning containers must compile for a class element type.
template class QvOwning<TrackedObject, QvDynArray<TrackedObject*>>;
template class QvDynPArray<TrackedObject>;
template class QvOwning<TrackedObject, QvDList<TrackedObject*>>;
template class QvOwningList<TrackedObject, QvDList<TrackedObject*>>;
template class QvPDList<TrackedObject>;
template class QvOwning<TrackedObject, QvXList<TrackedObject*>>;
template class QvOwningList<TrackedObject, QvXList<TrackedObject*>>;
template class QvPXList<TrackedObject>;

namespace {

template <class T> struct SmallGroupPXList : QvPXList<T> {
    using QvPXList<T>::QvPXList;
    SmallGroupPXList() : QvPXList<T>(0, 2, 2) {}
    using QvPXList<T>::operator=;
};

std::vector<int> KeysOf(QvDynArrayBase<TrackedObject*>& c) {
    std::vector<int> keys;
    for (TrackedObject** slot = c.GetFirst(); slot; slot = c.GetNext(slot))
        keys.push_back(*slot ? (*slot)->key : -1);
    return keys;
}

} // namespace

template <class Container> class OwnershipTest : public ::testing::Test {
protected:
    void SetUp() override { TrackedObject::ResetLedger(); }
    // Runs after every container of the test is gone.
    void TearDown() override {
        EXPECT_EQ(TrackedObject::ledger().alive, 0);
        EXPECT_EQ(TrackedObject::Anomalies(), 0) << "some object was deleted twice or never";
    }
    static void FillKeys(Container& c, std::vector<int> keys) {
        for (int k : keys) c.Append(new TrackedObject(k));
    }
};
using OwningKinds =
    ::testing::Types<QvDynPArray<TrackedObject>, QvPDList<TrackedObject>, SmallGroupPXList<TrackedObject>>;
TYPED_TEST_SUITE(OwnershipTest, OwningKinds);

TYPED_TEST(OwnershipTest, DeletionsAndTheDestructorDeleteEachObjectOnce) {
    TypeParam c;
    this->FillKeys(c, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    c.MoveTo(4);
    c.DelCur();
    c.Del(0);
    c.DelHead();
    c.DelTail();
    EXPECT_EQ(c.FindDataDel(TrackedObject(6)), 3);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{2, 3, 5, 7, 8}));
    EXPECT_EQ(TrackedObject::ledger().alive, 5);
    c.SetLength(3, true);
    EXPECT_EQ(TrackedObject::ledger().alive, 3);
    c.DecreaseSize(1);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{2, 3}));
    EXPECT_EQ(TrackedObject::ledger().alive, 2);
}

TYPED_TEST(OwnershipTest, ResetAndShorteningWithoutKeepingDeleteEverything) {
    TypeParam c;
    this->FillKeys(c, {1, 2, 3});
    c.SetLength(5, false);
    EXPECT_EQ(TrackedObject::ledger().alive, 0);
    EXPECT_EQ(c.GetDataNum(), 0);
    this->FillKeys(c, {4, 5});
    c.Reset();
    EXPECT_EQ(TrackedObject::ledger().alive, 0);
    EXPECT_TRUE(c.IsEmpty());
}

TYPED_TEST(OwnershipTest, ReleaseDeletesButKeepsTheSlot) {
    TypeParam c;
    this->FillKeys(c, {1, 2, 3, 4});
    c.MoveTo(1);
    c.ReleaseCur();
    EXPECT_TRUE(c.IsCurEmpty());
    c.Release(3);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{1, -1, 3, -1}));
    EXPECT_EQ(c.GetDataNum(), 2);
    EXPECT_EQ(c.PlaceIn(new TrackedObject(9)), 1);
    c.ReleaseAll();
    EXPECT_EQ(c.GetLength(), 4);
    EXPECT_EQ(c.GetDataNum(), 0);
    EXPECT_EQ(TrackedObject::ledger().alive, 0);
    EXPECT_EQ(c.PlaceIn(new TrackedObject(5)), 0);
}

TYPED_TEST(OwnershipTest, TakeOffHandsObjectsOverAndDeletesNothing) {
    TypeParam c;
    this->FillKeys(c, {1, 2, 3, 4});
    c.MoveTo(1);
    TrackedObject* middle = c.TakeOffCur();
    TrackedObject* head = c.TakeOffHead();
    TrackedObject* tail = c.TakeOffTail();
    EXPECT_EQ(c.TakeOffCur(), nullptr) << "the current slot is already empty";
    EXPECT_EQ(KeysOf(c), (std::vector<int>{-1, 3}));
    EXPECT_EQ(c.GetDataNum(), 1);
    ASSERT_TRUE(middle && head && tail);
    EXPECT_EQ(middle->key + 10 * head->key + 100 * tail->key, 412);
    EXPECT_EQ(TrackedObject::ledger().alive, 4);
    c.Reset();
    EXPECT_EQ(TrackedObject::ledger().alive, 3);
    for (TrackedObject* object : {middle, head, tail}) {
        EXPECT_EQ(TrackedObject::DeletionsOf(object), 0);
        delete object;
    }
    TypeParam empty;
    EXPECT_EQ(empty.TakeOffHead(), nullptr);
    EXPECT_EQ(empty.TakeOffTail(), nullptr);
}

TYPED_TEST(OwnershipTest, SetCurDataDeletesTheObjectItReplaces) {
    TypeParam c;
    this->FillKeys(c, {1, 2});
    c.MoveTo(0);
    TrackedObject* kept = c.GetCurData();
    const int keptSerial = kept->serial;
    c.SetCurData(kept);
    EXPECT_EQ(TrackedObject::ledger().deletions[keptSerial], 0);
    c.SetCurData(new TrackedObject(7));
    EXPECT_EQ(TrackedObject::ledger().deletions[keptSerial], 1);
    c.MoveTo(-1);
    TrackedObject* stray = new TrackedObject(8);
    c.SetCurData(stray); // nowhere to put it: still the caller's
    EXPECT_EQ(KeysOf(c), (std::vector<int>{7, 2}));
    delete stray;
}

TYPED_TEST(OwnershipTest, CopiesCloneTheObjects) {
    TypeParam c;
    this->FillKeys(c, {1, 2, 3});
    c.MoveTo(1);
    c.ReleaseCur();
    {
        TypeParam copy(c);
        EXPECT_EQ(KeysOf(copy), (std::vector<int>{1, -1, 3}));
        EXPECT_NE(copy[0], c[0]);
        TypeParam assigned;
        this->FillKeys(assigned, {8});
        assigned = c;
        assigned = assigned;
        QvDynArray<TrackedObject*> view(c); // a non-owning view shares the pointers
        EXPECT_EQ(view[2], c[2]);
        TypeParam fromView(view);
        EXPECT_NE(fromView[2], c[2]);
        TypeParam ranges;
        c.Mid(1, 2, ranges);
        EXPECT_EQ(KeysOf(ranges), (std::vector<int>{-1, 3}));
        ranges << c;
        ranges.Left(3, ranges);
        EXPECT_EQ(KeysOf(ranges), (std::vector<int>{-1, 3, 1}));
        ranges.DeepCopy(c);
        c.Right(1, view); // into a non-owning view: shared, not cloned
        EXPECT_EQ(view[0], c[2]);
        EXPECT_EQ(TrackedObject::ledger().alive, 2 * 5) << "five owners of two objects each";
    }
    EXPECT_EQ(TrackedObject::ledger().alive, 2);
}

TYPED_TEST(OwnershipTest, ObjectsAreDeletedThroughTheirVirtualDestructor) {
    TrackedDerived::derivedDestroyed = 0;
    {
        TypeParam c;
        c.Append(new TrackedDerived(1));
        c.Append(new TrackedDerived(2));
        c.DelHead();
    }
    EXPECT_EQ(TrackedDerived::derivedDestroyed, 2);
}

TYPED_TEST(OwnershipTest, DataSearchesCompareObjectsNotPointers) {
    TypeParam c;
    this->FillKeys(c, {5, 1, 4, 1, 3});
    c.MoveTo(2);
    c.ReleaseCur();
    EXPECT_EQ(c.FindData(TrackedObject(1)), 1);
    EXPECT_EQ(c.FindData(TrackedObject(1), 2), 3);
    EXPECT_EQ(c.FindData(TrackedObject(4)), -1);
    c.SortEx(true);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{-1, 1, 1, 3, 5})) << "empty slots first";
    EXPECT_EQ(c.BFindData(TrackedObject(3)), 3);
    EXPECT_EQ(c.BFindData(TrackedObject(2)), -1);
    EXPECT_EQ(c.BFindDataTo(TrackedObject(4)), -1);
    EXPECT_EQ(c.GetCurIndex(), 4);
    EXPECT_EQ(c.SortInto(new TrackedObject(2)), 3);
    c.SortEx(false);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{5, 3, 2, 1, 1, -1}));
    EXPECT_EQ(c.BFindData(TrackedObject(1)), 3);
    EXPECT_EQ(c.SortInto(new TrackedObject(4), false), 1);
}

template <class Container> class OwningListTest : public OwnershipTest<Container> {};
using OwningListKinds = ::testing::Types<QvPDList<TrackedObject>, SmallGroupPXList<TrackedObject>>;
TYPED_TEST_SUITE(OwningListTest, OwningListKinds);

TYPED_TEST(OwningListTest, CuttingTheChainDeletesAndSplittingHandsOver) {
    TypeParam c, other;
    this->FillKeys(c, {0, 1, 2, 3, 4, 5});
    c.MoveTo(3);
    c.DetachAfterCur();
    EXPECT_EQ(TrackedObject::ledger().alive, 4);
    c.SplitAt(1, other);
    EXPECT_EQ(KeysOf(other), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(TrackedObject::ledger().alive, 4);
    c.Conbine(other, 0);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{1, 2, 3, 0}));
    c.DetachAfter(1);
    c.Detach();
    EXPECT_EQ(TrackedObject::ledger().alive, 0);
}

TYPED_TEST(OwningListTest, ConditionalAddsCopyTheValueOnlyWhenMissing) {
    TypeParam c;
    this->FillKeys(c, {3, 4});
    EXPECT_EQ(c.FindDataOrAppend(TrackedObject(4)), 1);
    EXPECT_EQ(c.FindDataOrAppend(TrackedObject(5)), 2);
    EXPECT_EQ(c.FindDataOrInsertHead(TrackedObject(5)), 2);
    EXPECT_EQ(c.FindDataOrInsertHead(TrackedObject(1)), 0);
    EXPECT_EQ(KeysOf(c), (std::vector<int>{1, 3, 4, 5}));
}
