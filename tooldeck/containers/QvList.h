#pragma once

#include "tooldeck/containers/QvDynArrayBase.h"
#include "tooldeck/containers/QvListNode.h"

#include <algorithm>
#include <type_traits>

// A singly linked list closed into a ring by a sentinel node: the sentinel's next is the first node and the
// last node's next is the sentinel, so an empty list is the sentinel pointing at itself. With the cursor at
// -1 the current node is the sentinel; that is why InsertCur then appends and InsertAfterCur inserts at the
// head.
//
// The doubly linked and indexed lists derive from this class and keep their extra links through the
// protected hooks below, so that every relinking is written once, here.
template <class T> class QvList : public QvDynArrayBase<T> {
    using Base = QvDynArrayBase<T>;

public:
    using Node = QvListNode<T>;
    using Base::GetFirst;
    using Base::GetLast;
    using Base::GetNext;
    using Base::GetPre;

    explicit QvList(long initSize = 0) : QvList(new Node(), SentinelTag{}) { ReAllocate(initSize); }
    QvList(const QvList& src) : QvList(new Node(), SentinelTag{}) { this->CopyFrom(src); }
    QvList(const QvDynArrayBase<T>& src) : QvList(new Node(), SentinelTag{}) { this->CopyFrom(src); }
    QvList& operator=(const QvList& src) {
        Base::operator=(src);
        return *this;
    }
    QvList& operator=(const QvDynArrayBase<T>& src) {
        Base::operator=(src);
        return *this;
    }
    ~QvList() override {
        if (m_head) FreeChain();
    }

    void SetLength(long n, bool keepData) override {
        n = std::max(n, 0L);
        const long oldLength = this->m_length;
        if (n < oldLength) {
            TruncateAfter(n == 0 ? m_head : NodeAt(n - 1));
            if (this->m_curIndex >= n) SetOut();
        }
        while (this->m_length < n) LinkAfter(m_tail, CreateNode(T{}));
        if (!keepData) {
            for (Node* node = First(); node != m_head; node = node->next) node->data = T{};
        }
        if (n != oldLength) ChainChanged(std::min(oldLength, n));
    }
    void Reset() override { ClearChain(); }

    T& GetCurData() override {
        if (!this->IsOut()) return m_curNode->data;
        m_head->data = T{};
        return m_head->data;
    }
    void SetCurData(const T& value) override {
        if (!this->IsOut()) m_curNode->data = value;
    }
    void MoveToFirst() override { MoveToNode(First(), this->m_length > 0 ? 0 : -1); }
    void MoveToNext() override {
        if (this->IsOut()) return;
        MoveToNode(m_curNode->next, this->m_curIndex + 1);
    }
    void MoveToPre() override {
        if (this->IsOut()) return;
        const long at = this->m_curIndex - 1;
        MoveToNode(at < 0 ? m_head : PrevOf(m_curNode, this->m_curIndex), at);
    }
    void MoveToLast() override { MoveToNode(m_tail, this->m_length - 1); }
    void MoveTo(long index) override {
        if (this->IsValidIndex(index)) {
            MoveToNode(NodeAt(index), index);
        } else {
            SetOut();
        }
    }
    T& operator[](long index) override {
        return this->IsValidIndex(index) ? NodeAt(index)->data : Base::DetachedSlot();
    }

    T* GetFirst() override { return this->m_length > 0 ? &First()->data : nullptr; }
    T* GetNext(const T* element) override {
        Node* node = NodeOf(element);
        if (!node || node == m_head || node->next == m_head) return nullptr;
        return &node->next->data;
    }
    T* GetPre(const T* element) override {
        Node* node = NodeOf(element);
        if (!node || node == m_head || node == First()) return nullptr;
        if (IsDoublyLinked()) return &AsDouble(node)->prev->data;
        Node* pred = First();
        while (pred->next != node && pred->next != m_head) pred = pred->next;
        return pred->next == node ? &pred->data : nullptr;
    }
    T* GetLast() override { return this->m_length > 0 ? &m_tail->data : nullptr; }
    const T& GetAt(long index) const override {
        return this->IsValidIndex(index) ? NodeAt(index)->data : Base::DetachedSlot();
    }

    void InsertCur(const T& value) override {
        if (this->IsOut()) {
            LinkAfter(m_tail, CreateNode(value));
            MoveToNode(m_tail, this->m_length - 1);
        } else {
            Node* node = CreateNode(value);
            LinkAfter(PrevOf(m_curNode, this->m_curIndex), node);
            m_curNode = node;
        }
        ChainChanged(this->m_curIndex);
    }
    void Insert(long index, const T& value) override {
        if (index < 0 || index > this->m_length) return;
        LinkAfter(NodeBefore(index), CreateNode(value));
        if (this->m_curIndex >= index) ++this->m_curIndex;
        ChainChanged(index);
    }
    long Append(const T& value) override {
        LinkAfter(m_tail, CreateNode(value));
        ChainChanged(this->m_length - 1);
        return this->m_length - 1;
    }
    void DelCur() override {
        if (this->IsOut()) return;
        const long at = this->m_curIndex;
        Node* next = m_curNode->next;
        DestroyNode(UnlinkAfter(PrevOf(m_curNode, at)));
        MoveToNode(next, next == m_head ? -1 : at);
        ChainChanged(at);
    }
    bool Move(long from, long to) override {
        if (!this->IsValidIndex(from) || !this->IsValidIndex(to)) return false;
        if (from == to) return true;
        Node* node = NodeAt(from);
        // Found before unlinking, in the original positions: the node lands after the one now at `to` when
        // moving back, or before it when moving forward.
        Node* target = from < to ? NodeAt(to) : NodeBefore(to);
        UnlinkAfter(PrevOf(node, from));
        LinkAfter(target, node);
        long& cur = this->m_curIndex;
        if (cur == from) {
            cur = to;
        } else if (from < cur && cur <= to) {
            --cur;
        } else if (to <= cur && cur < from) {
            ++cur;
        }
        ChainChanged(std::min(from, to));
        return true;
    }

    // With the cursor at -1 the value goes in after the sentinel, i.e. at the head.
    virtual void InsertAfterCur(const T& value) {
        Node* node = CreateNode(value);
        const long at = this->IsOut() ? 0 : this->m_curIndex + 1;
        LinkAfter(m_curNode, node);
        MoveToNode(node, at);
        ChainChanged(at);
    }
    // Frees every node after the cursor; nothing happens when the cursor is at -1.
    virtual void DetachAfterCur() {
        if (this->IsOut()) return;
        TruncateAfter(m_curNode);
        ChainChanged(this->m_curIndex + 1);
    }
    // Moves all of other's elements in before position pos (the end when pos is out of range); other ends
    // empty. Returns the new length.
    virtual long Conbine(QvList& other, long pos) {
        if (&other == this || other.m_length == 0) return this->m_length;
        if (pos < 0 || pos > this->m_length) pos = this->m_length;
        Node* pred = NodeBefore(pos);
        const long added = other.m_length;
        if (IsDoublyLinked() == other.IsDoublyLinked()) {
            Node* first = other.First();
            Node* last = other.m_tail;
            other.ForgetChain();
            last->next = pred->next;
            pred->next = first;
            if (pred == m_tail) m_tail = last;
            this->m_length += added;
            RepairBackLinks(pred, added + 1);
        } else {
            // Nodes of another shape cannot be spliced; their values are carried over instead.
            for (Node* node = other.First(); node != other.m_head; node = node->next) {
                Node* copy = CreateNode(node->data);
                LinkAfter(pred, copy);
                pred = copy;
            }
            other.ClearChain();
        }
        if (this->m_curIndex >= pos) this->m_curIndex += added;
        ChainChanged(pos);
        return this->m_length;
    }
    virtual void ReverseList() {
        if (this->m_length < 2) return;
        Node* oldFirst = First();
        Node* prev = m_head;
        for (Node* node = oldFirst; node != m_head;) {
            Node* next = node->next;
            node->next = prev;
            prev = node;
            node = next;
        }
        m_head->next = prev;
        m_tail = oldFirst;
        RepairBackLinks(m_head, this->m_length + 1);
        if (!this->IsOut()) this->m_curIndex = this->m_length - 1 - this->m_curIndex;
        ChainChanged(0);
    }
    // Rotates the part from position first to the end so that the element at middle comes to position
    // first (Rotate(0, k) makes element k the head). Needs 0 <= first < middle < length.
    virtual void Rotate(long first, long middle) {
        if (first < 0 || first >= middle || middle >= this->m_length) return;
        Node* pred = NodeBefore(first);
        Node* firstNode = pred->next;
        Node* middleNode = NodeAt(middle);
        Node* beforeMiddle = PrevOf(middleNode, middle);
        pred->next = middleNode;
        m_tail->next = firstNode;
        beforeMiddle->next = m_head;
        m_tail = beforeMiddle;
        RepairBackLinks(pred, this->m_length - first + 1);
        long& cur = this->m_curIndex;
        if (cur >= first) cur = cur < middle ? cur + (this->m_length - middle) : cur - (middle - first);
        ChainChanged(first);
    }

    // Moves the elements from pos on into out, which loses what it held. The cursor goes to -1 if it was
    // on a moved element.
    void SplitAt(long pos, QvList& out) {
        if (&out == this) return;
        out.Reset();
        pos = std::max(pos, 0L);
        if (pos >= this->m_length) return;
        Node* pred = NodeBefore(pos);
        const long moved = this->m_length - pos;
        if (IsDoublyLinked() == out.IsDoublyLinked()) {
            Node* first = pred->next;
            Node* last = m_tail;
            pred->next = m_head;
            m_tail = pred;
            this->m_length = pos;
            RepairBackLinks(pred, 1);
            out.m_head->next = first;
            last->next = out.m_head;
            out.m_tail = last;
            out.m_length = moved;
            out.RepairBackLinks(out.m_head, moved + 1);
        } else {
            for (Node* node = pred->next; node != m_head; node = node->next) {
                out.LinkAfter(out.m_tail, out.CreateNode(node->data));
            }
            TruncateAfter(pred);
        }
        if (this->m_curIndex >= pos) SetOut();
        ChainChanged(pos);
        out.ChainChanged(0);
    }
    void SplitAtCur(QvList& out) {
        if (!this->IsOut()) SplitAt(this->m_curIndex, out);
    }
    // Removes every element after position pos; a negative pos empties the list.
    void DetachAfter(long pos) {
        if (pos < 0) {
            Reset();
            return;
        }
        if (pos >= this->m_length - 1) return;
        const long keptIndex = this->m_curIndex;
        Node* keptNode = m_curNode;
        MoveTo(pos);
        DetachAfterCur();
        if (keptIndex >= 0 && keptIndex <= pos) {
            MoveToNode(keptNode, keptIndex);
        } else {
            SetOut();
        }
    }
    void Detach() { DetachAfter(-1); }

protected:
    struct SentinelTag {};
    QvList(Node* sentinel, SentinelTag) : m_curNode(sentinel), m_head(sentinel), m_tail(sentinel) {
        sentinel->next = sentinel;
    }

    // Only grows, through the virtual Append, so derived lists see every new element.
    void ReAllocate(long n) override {
        if (n <= this->m_length) return;
        const long keptIndex = this->m_curIndex;
        Node* keptNode = m_curNode;
        while (this->m_length < n) Append(T{});
        MoveToNode(keptNode, keptIndex);
    }

    // Hooks for the derived lists: node shape, back links and the position index.
    virtual Node* CreateNode(const T& value) { return new Node(value); }
    virtual void DestroyNode(Node* node) { delete node; }
    // The `count` links starting with from -> from->next were just set; derived lists mirror them.
    virtual void RepairBackLinks(Node*, long) {}
    // The chain changed from this position on.
    virtual void ChainChanged(long) {}
    virtual bool IsDoublyLinked() const { return false; }

    Node* First() const { return m_head->next; }

    // Walks from the nearest known node: the head, the cursor, or (with back links) the tail.
    Node* NodeAt(long i) const {
        Node* node = First();
        long steps = i;
        bool backward = false;
        const long cur = this->m_curIndex;
        if (cur >= 0 && cur <= i && i - cur < steps) {
            node = m_curNode;
            steps = i - cur;
        }
        if (IsDoublyLinked()) {
            if (this->m_length - 1 - i < steps) {
                node = m_tail;
                steps = this->m_length - 1 - i;
                backward = true;
            }
            if (cur > i && cur - i < steps) {
                node = m_curNode;
                steps = cur - i;
                backward = true;
            }
        }
        for (; steps > 0; --steps) node = backward ? AsDouble(node)->prev : node->next;
        return node;
    }
    // The node after which position i begins (the sentinel for 0).
    Node* NodeBefore(long i) const {
        if (i == 0) return m_head;
        return i == this->m_length ? m_tail : NodeAt(i - 1);
    }
    Node* PrevOf(Node* node, long position) const {
        return IsDoublyLinked() ? AsDouble(node)->prev : NodeBefore(position);
    }
    static QvDListNode<T>* AsDouble(Node* node) { return static_cast<QvDListNode<T>*>(node); }

    // The node holding element, without searching when the element is known to sit at the node's start.
    Node* NodeOf(const T* element) const {
        if (!element || element == &Base::DetachedSlotStorage()) return nullptr;
        if constexpr (std::is_standard_layout_v<Node>) {
            return reinterpret_cast<Node*>(const_cast<T*>(element));
        } else {
            if (element == &m_curNode->data) return m_curNode;
            Node* node = m_head;
            do {
                if (&node->data == element) return node;
                node = node->next;
            } while (node != m_head);
            return nullptr;
        }
    }

    void LinkAfter(Node* pred, Node* node) {
        node->next = pred->next;
        pred->next = node;
        if (pred == m_tail) m_tail = node;
        ++this->m_length;
        RepairBackLinks(pred, 2);
    }
    Node* UnlinkAfter(Node* pred) {
        Node* node = pred->next;
        pred->next = node->next;
        if (node == m_tail) m_tail = pred;
        --this->m_length;
        RepairBackLinks(pred, 1);
        return node;
    }
    // Frees the nodes after last; the caller settles the cursor.
    void TruncateAfter(Node* last) {
        for (Node* node = last->next; node != m_head;) {
            Node* next = node->next;
            DestroyNode(node);
            --this->m_length;
            node = next;
        }
        last->next = m_head;
        m_tail = last;
        RepairBackLinks(last, 1);
    }
    // Empties the list without the virtual Reset, so an owning list does not delete the objects.
    void ClearChain() {
        TruncateAfter(m_head);
        SetOut();
        ChainChanged(0);
    }
    // Empties the list without freeing its nodes, which now belong to another list.
    void ForgetChain() {
        m_head->next = m_head;
        m_tail = m_head;
        this->m_length = 0;
        RepairBackLinks(m_head, 1);
        SetOut();
        ChainChanged(0);
    }
    void FreeChain() {
        TruncateAfter(m_head);
        DestroyNode(m_head);
        m_head = m_tail = m_curNode = nullptr;
    }

    void SetOut() { MoveToNode(m_head, -1); }
    void MoveToNode(Node* node, long index) {
        if (index < 0 || node == m_head) {
            m_curNode = m_head;
            this->m_curIndex = -1;
        } else {
            m_curNode = node;
            this->m_curIndex = index;
        }
    }

    Node* m_curNode;
    Node* m_head;
    Node* m_tail;
};
