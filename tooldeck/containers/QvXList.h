#pragma once

#include "tooldeck/containers/QvDList.h"
#include "tooldeck/containers/QvDynArray.h"

#include <algorithm>

// A doubly linked list with an index of every group-th node (positions 0, g, 2g, ...), so that a move to a
// position walks at most g - 1 nodes. Any change to the chain rebuilds the index from the group holding the
// changed position onward; the entries before it still point at the same positions.
template <class T> class QvXList : public QvDList<T> {
    using List = QvDList<T>;
    using Node = QvListNode<T>;

public:
    explicit QvXList(long initSize = 0, long groupSize = 25, long indexAllocUnit = 100)
        : List(initSize), m_index(0, indexAllocUnit), m_groupSize(std::max(groupSize, 1L)) {
        UpdateGroup(0);
    }
    QvXList(const QvXList& src)
        : List(src), m_index(0, src.m_index.GetAllocUnit()), m_groupSize(src.m_groupSize) {
        UpdateGroup(0);
    }
    QvXList(const QvDynArrayBase<T>& src) : List(src), m_index(0, 100), m_groupSize(25) { UpdateGroup(0); }
    QvXList& operator=(const QvXList& src) {
        if (&src != this) {
            // Entries made for the old group size are worthless once it changes.
            m_groupSize = src.m_groupSize;
            m_index.Reset();
            List::operator=(src);
            UpdateGroup(0);
        }
        return *this;
    }
    QvXList& operator=(const QvDynArrayBase<T>& src) {
        List::operator=(src);
        return *this;
    }

    void MoveTo(long index) override {
        if (this->IsValidIndex(index)) {
            this->MoveToNode(IndexedNodeAt(index), index);
        } else {
            this->SetOut();
        }
    }
    T& operator[](long index) override {
        return this->IsValidIndex(index) ? IndexedNodeAt(index)->data : List::DetachedSlot();
    }
    const T& GetAt(long index) const override {
        return this->IsValidIndex(index) ? IndexedNodeAt(index)->data : List::DetachedSlot();
    }

    long GetGroupSize() const { return m_groupSize; }

    // Re-reads the index entries from slot k on; the cursor is not disturbed.
    void UpdateGroup(long k) {
        const long g = m_groupSize;
        const long slots = (this->m_length + g - 1) / g;
        // Entries below k are trusted, so start no later than the first one that was never written.
        k = std::clamp(k, 0L, std::min(slots, m_index.GetLength()));
        Node* node = k == 0 ? this->First() : m_index[k - 1];
        long pos = k == 0 ? 0 : (k - 1) * g;
        m_index.ReAllocate(slots);
        for (long slot = k; slot < slots; ++slot) {
            for (; pos < slot * g; ++pos) node = node->next;
            m_index[slot] = node;
        }
    }

protected:
    void ChainChanged(long fromPosition) override { UpdateGroup(fromPosition / m_groupSize); }

private:
    Node* IndexedNodeAt(long i) const {
        const long slot = i / m_groupSize;
        Node* node = this->First();
        long pos = 0;
        if (m_index.IsValidIndex(slot)) {
            node = m_index.GetAt(slot);
            pos = slot * m_groupSize;
        }
        for (; pos < i; ++pos) node = node->next;
        return node;
    }

    QvDynArray<Node*> m_index;
    long m_groupSize;
};
