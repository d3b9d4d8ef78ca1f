#pragma once

#include "tooldeck/containers/QvOwnership.h"
#include "tooldeck/containers/QvQuene.h"
#include "tooldeck/containers/QvStableOrder.h"

#include <algorithm>
#include <utility>
#include <vector>

// The common interface of the arrays and lists: a length, a cursor (the current element, -1 for none) and
// the algorithms that only need element access. Nothing here reports errors: a cursor that leaves the range
// becomes -1, a search that fails returns -1, an operation on a position that does not exist does nothing.
//
// Cursor rules shared by every container:
// - insertions, deletions and moves by position keep the cursor on the element it was on, and a length
//   cut below the cursor makes it -1;
// - InsertCur and InsertAfterCur leave the cursor on the new element;
// - DelCur moves the cursor to the following element, or to -1 after the last one;
// - value reorderings (Sort, Reverse) keep the cursor index, so it then sees whatever moved there.
template <class T> class QvDynArrayBase {
public:
    QvDynArrayBase() = default;
    // The derived class copies the elements; here only the bookkeeping starts afresh.
    QvDynArrayBase(const QvDynArrayBase&) {}
    QvDynArrayBase& operator=(const QvDynArrayBase& src) {
        CopyFrom(src);
        return *this;
    }

    // Virtual interface; the order is part of the exported layout and derived classes append to it.
    virtual void ReAllocate(long n) = 0;
    virtual ~QvDynArrayBase() = default;
    virtual void SetLength(long n, bool keepData) = 0;
    virtual void Reset() = 0;
    virtual T& GetCurData() = 0;
    virtual void SetCurData(const T& value) = 0;
    virtual void MoveToFirst() { MoveTo(0); }
    virtual void MoveToNext() {
        if (!IsOut()) MoveTo(m_curIndex + 1);
    }
    virtual void MoveToPre() {
        if (!IsOut()) MoveTo(m_curIndex - 1);
    }
    virtual void MoveToLast() { MoveTo(m_length - 1); }
    virtual void MoveTo(long index) = 0;
    virtual T& operator[](long index) = 0;
    virtual T* GetFirst() = 0;
    virtual T* GetNext(const T* element) = 0;
    virtual T* GetPre(const T* element) = 0;
    virtual T* GetLast() = 0;
    virtual const T& GetAt(long index) const = 0;
    virtual void InsertCur(const T& value) = 0;
    virtual void Insert(long index, const T& value) = 0;
    virtual void InsertHead(const T& value) { Insert(0, value); }
    virtual long Append(const T& value) {
        Insert(m_length, value);
        return m_length - 1;
    }
    virtual void DelCur() = 0;
    virtual void Sort(int (*compare)(const T&, const T&)) {
        if (compare) SortBy([compare](const T& a, const T& b) { return compare(a, b) < 0; });
    }
    virtual void Sort(bool ascending) {
        if (ascending) {
            SortBy([](const T& a, const T& b) { return a < b; });
        } else {
            SortBy([](const T& a, const T& b) { return b < a; });
        }
    }
    virtual bool Move(long from, long to) = 0;

    // Read-only walking for const containers; the walk itself never changes anything.
    const T* GetFirst() const { return Mutable().GetFirst(); }
    const T* GetNext(const T* element) const { return Mutable().GetNext(element); }
    const T* GetPre(const T* element) const { return Mutable().GetPre(element); }
    const T* GetLast() const { return Mutable().GetLast(); }

    long GetLength() const { return m_length; }
    long GetMaxIndex() const { return m_length - 1; }
    long GetCurIndex() const { return m_curIndex; }
    bool IsEmpty() const { return m_length == 0; }
    bool IsValidIndex(long i) const { return i >= 0 && i < m_length; }
    bool IsOut() const { return !IsValidIndex(m_curIndex); }
    bool IsBegin() const { return m_curIndex == 0 && m_length > 0; }
    bool IsEnd() const { return m_curIndex >= 0 && m_curIndex == m_length - 1; }

    T* GetTo(long i) {
        MoveTo(i);
        return IsOut() ? nullptr : &GetCurData();
    }

    long Find(const T& value, long start = 0, long end = -1) const {
        return FindWhere([&value](const T& e) { return e == value; }, start, end);
    }
    // Collects every hit into hits (after what it already holds); returns the first hit or -1.
    long Find(const T& value, QvQuene<long>& hits, long start = 0, long end = -1) const {
        long first = -1;
        long i = std::max(start, 0L);
        const long last = ClampEnd(end);
        for (const T* e = ElementAt(i); e && i <= last; e = GetNext(e), ++i) {
            if (!(*e == value)) continue;
            hits.Append(i);
            if (first < 0) first = i;
        }
        return first;
    }
    // Leaves the cursor on the hit; a miss leaves it where it was.
    long FindTo(const T& value, long start = 0) {
        const long i = Find(value, start);
        if (i >= 0) MoveTo(i);
        return i;
    }
    long FindDel(const T& value) {
        const long i = Find(value);
        if (i >= 0) Del(i);
        return i;
    }
    long FindOrAppend(const T& value) {
        const long i = Find(value);
        return i >= 0 ? i : Append(value);
    }
    long FindOrInsertHead(const T& value) {
        const long i = Find(value);
        if (i >= 0) return i;
        InsertHead(value);
        return 0;
    }

    // Binary search of a range sorted either way; the direction is read from the range's two ends.
    long BFind(const T& value, long start = 0, long end = -1) const {
        bool hit = false;
        const long place = SearchSorted(value, ValueLess(), start, end, hit);
        return hit ? place : -1;
    }
    // As BFind, leaving the cursor on the first equal element or, on a miss, where the value would be
    // inserted (-1 when that is past the last element).
    long BFindTo(const T& value, long start = 0, long end = -1) {
        bool hit = false;
        const long place = SearchSorted(value, ValueLess(), start, end, hit);
        MoveTo(place);
        return hit ? place : -1;
    }
    // Inserts after any equal elements, so repeated inserts keep their arrival order; the cursor ends on
    // the new element. Returns its index.
    long SortInto(const T& value, bool ascending = true) {
        return InsertSorted(value, ValueLess(), ascending);
    }

    void Reverse(long from = 0, long to = -1) {
        std::vector<T*> slots = CollectSlots(std::max(from, 0L), ClampEnd(to));
        for (size_t a = 0, b = slots.size(); a + 1 < b; ++a, --b) std::swap(*slots[a], *slots[b - 1]);
    }

    bool Del(long i) {
        if (!IsValidIndex(i)) return false;
        if (i == m_curIndex) {
            DelCur();
            return true;
        }
        const long kept = m_curIndex;
        MoveTo(i);
        DelCur();
        MoveTo(kept < 0 ? -1 : (kept > i ? kept - 1 : kept));
        return true;
    }
    bool DelHead() { return Del(0); }
    bool DelTail() { return Del(m_length - 1); }

    void SetAll(const T& value) {
        const T copy(value);
        for (T* e = GetFirst(); e; e = GetNext(e)) *e = copy;
    }

    // The sub-range copies replace what out held and leave its cursor at -1.
    void Left(long n, QvDynArrayBase& out) const { CopyRangeTo(0, n, out); }
    void Right(long n, QvDynArrayBase& out) const {
        const long count = std::clamp(n, 0L, m_length);
        CopyRangeTo(m_length - count, count, out);
    }
    // A negative n takes everything from start on.
    void Mid(long start, long n, QvDynArrayBase& out) const { CopyRangeTo(start, n < 0 ? m_length : n, out); }

    // Replaces the contents (and cursor) with a copy of src.
    void DeepCopy(const QvDynArrayBase& src) { CopyFrom(src); }
    void DeepCopy(const T* block, long n) {
        std::vector<T> values;
        const bool owning = OwnsElements();
        for (long i = 0; i < n; ++i) values.push_back(owning ? QvCloneElement(block[i]) : block[i]);
        ReplaceWith(values);
    }
    QvDynArrayBase& operator<<(const QvDynArrayBase& src) {
        for (T& value : src.CopiesFor(*this, 0, src.m_length)) Append(value);
        return *this;
    }
    QvDynArrayBase& operator<<(const T& value) {
        Append(value);
        return *this;
    }

    void IncreaseSize(long delta) {
        if (delta > 0) ReAllocate(m_length + delta);
    }
    void DecreaseSize(long delta) {
        if (delta > 0) SetLength(std::max(m_length - delta, 0L), true);
    }

    bool operator==(const QvDynArrayBase& other) const {
        if (m_length != other.m_length) return false;
        for (const T *a = GetFirst(), *b = other.GetFirst(); a; a = GetNext(a), b = other.GetNext(b)) {
            if (!(*a == *b)) return false;
        }
        return true;
    }
    bool operator!=(const QvDynArrayBase& other) const { return !(*this == other); }
    // Lexicographic, with a shorter prefix ordered first.
    bool operator<(const QvDynArrayBase& other) const {
        const T *a = GetFirst(), *b = other.GetFirst();
        for (; a && b; a = GetNext(a), b = other.GetNext(b)) {
            if (*a < *b) return true;
            if (*b < *a) return false;
        }
        return !a && b;
    }
    bool operator>(const QvDynArrayBase& other) const { return other < *this; }

protected:
    // Stands in for a missing element so that reads and writes through an invalid position stay harmless.
    static T& DetachedSlot() {
        T& slot = DetachedSlotStorage();
        slot = T{};
        return slot;
    }
    static T& DetachedSlotStorage() {
        static thread_local T slot{};
        return slot;
    }

    long ClampEnd(long end) const { return end < 0 || end >= m_length ? m_length - 1 : end; }

    T* ElementAt(long i) {
        if (!IsValidIndex(i)) return nullptr;
        return &(*this)[i];
    }
    const T* ElementAt(long i) const { return IsValidIndex(i) ? &GetAt(i) : nullptr; }

    std::vector<T*> CollectSlots(long from = 0, long to = -1) {
        std::vector<T*> slots;
        long i = std::max(from, 0L);
        const long last = to < 0 ? m_length - 1 : std::min(to, m_length - 1);
        if (i > last) return slots;
        slots.reserve(static_cast<size_t>(last - i + 1));
        for (T* e = ElementAt(i); e && i <= last; e = GetNext(e), ++i) slots.push_back(e);
        return slots;
    }

    template <class Predicate> long FindWhere(Predicate matches, long start, long end) const {
        long i = std::max(start, 0L);
        const long last = ClampEnd(end);
        for (const T* e = ElementAt(i); e && i <= last; e = GetNext(e), ++i) {
            if (matches(*e)) return i;
        }
        return -1;
    }

    struct ValueLessFn {
        bool operator()(const T& a, const T& b) const { return a < b; }
    };
    static ValueLessFn ValueLess() { return {}; }

    // The first position in [start, end + 1) that does not sort before value; hit tells whether it holds
    // an equal element. Only less is used, with its arguments swapped for a descending range.
    template <class Less>
    long SearchSorted(const T& value, Less less, long start, long end, bool& hit) const {
        hit = false;
        long lo = std::max(start, 0L);
        long hi = ClampEnd(end) + 1;
        if (lo >= hi) return lo <= m_length ? lo : -1;
        const bool descending = less(GetAt(hi - 1), GetAt(lo));
        auto beforeValue = [&](const T& e) { return descending ? less(value, e) : less(e, value); };
        while (lo < hi) {
            const long mid = lo + (hi - lo) / 2;
            if (beforeValue(GetAt(mid))) {
                lo = mid + 1;
            } else {
                hi = mid;
            }
        }
        if (IsValidIndex(lo) && lo <= ClampEnd(end)) {
            const T& found = GetAt(lo);
            hit = !(descending ? less(found, value) : less(value, found));
        }
        return lo;
    }

    template <class Less> long InsertSorted(const T& value, Less less, bool ascending) {
        long lo = 0, hi = m_length;
        while (lo < hi) {
            const long mid = lo + (hi - lo) / 2;
            const T& e = GetAt(mid);
            if (ascending ? less(value, e) : less(e, value)) {
                hi = mid;
            } else {
                lo = mid + 1;
            }
        }
        Insert(lo, value);
        MoveTo(lo);
        return lo;
    }

    template <class Before> void SortBy(Before before) {
        if (m_length < 2) return;
        std::vector<T*> slots = CollectSlots();
        std::vector<long> order = QvStableOrder(static_cast<long>(slots.size()),
                                                [&](long a, long b) { return before(*slots[a], *slots[b]); });
        QvApplyOrder(slots, order);
    }

    bool OwnsElements() const { return dynamic_cast<const QvOwningContainer*>(this) != nullptr; }

    // Copies of [start, start + n) made ready for dest: cloned objects when dest owns them. Taking them all
    // before dest changes keeps copies into oneself correct.
    std::vector<T> CopiesFor(const QvDynArrayBase& dest, long start, long n) const {
        std::vector<T> values;
        const bool clone = dest.OwnsElements();
        long i = std::max(start, 0L);
        const long last = i + std::min(n, m_length - i) - 1;
        for (const T* e = ElementAt(i); e && i <= last; e = GetNext(e), ++i) {
            values.push_back(clone ? QvCloneElement(*e) : *e);
        }
        return values;
    }

    void ReplaceWith(std::vector<T>& values) {
        SetLength(static_cast<long>(values.size()), false);
        size_t k = 0;
        for (T* e = GetFirst(); e; e = GetNext(e)) *e = std::move(values[k++]);
    }

    void CopyFrom(const QvDynArrayBase& src) {
        if (&src == this) return;
        std::vector<T> values = src.CopiesFor(*this, 0, src.m_length);
        ReplaceWith(values);
        MoveTo(src.m_curIndex);
    }

    void CopyRangeTo(long start, long n, QvDynArrayBase& out) const {
        std::vector<T> values = CopiesFor(out, start, n);
        out.ReplaceWith(values);
        out.MoveTo(-1);
    }

    long m_length = 0;
    long m_curIndex = -1;

private:
    QvDynArrayBase& Mutable() const { return const_cast<QvDynArrayBase&>(*this); }
};
