#pragma once

#include "tooldeck/containers/QvList.h"

// The list with back links: stepping back, deleting at the cursor and inserting before it take constant
// time, and walks to a position may start from the tail. All relinking is QvList's; this class only makes
// the nodes and mirrors the forward links it is told about.
template <class T> class QvDList : public QvList<T> {
    using List = QvList<T>;
    using Node = QvListNode<T>;
    using DNode = QvDListNode<T>;
    using SentinelTag = typename List::SentinelTag;

public:
    explicit QvDList(long initSize = 0) : List(NewSentinel(), SentinelTag{}) { this->ReAllocate(initSize); }
    QvDList(const QvDList& src) : List(NewSentinel(), SentinelTag{}) { this->CopyFrom(src); }
    QvDList(const QvDynArrayBase<T>& src) : List(NewSentinel(), SentinelTag{}) { this->CopyFrom(src); }
    QvDList& operator=(const QvDList& src) {
        List::operator=(src);
        return *this;
    }
    QvDList& operator=(const QvDynArrayBase<T>& src) {
        List::operator=(src);
        return *this;
    }
    // The nodes are freed here, while DestroyNode still knows their real type.
    ~QvDList() override {
        if (this->m_head) this->FreeChain();
    }

protected:
    Node* CreateNode(const T& value) override { return new DNode(value); }
    void DestroyNode(Node* node) override { delete static_cast<DNode*>(node); }
    void RepairBackLinks(Node* from, long count) override {
        for (; count > 0; --count) {
            Node* next = from->next;
            static_cast<DNode*>(next)->prev = static_cast<DNode*>(from);
            from = next;
        }
    }
    bool IsDoublyLinked() const override { return true; }

private:
    static Node* NewSentinel() {
        DNode* sentinel = new DNode();
        sentinel->prev = sentinel;
        return sentinel;
    }
};
