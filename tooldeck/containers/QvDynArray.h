#pragma once

#include "tooldeck/containers/QvDynArrayBase.h"

#include <algorithm>
#include <functional>
#include <new>
#include <utility>

// A growable array in one block. Slots between the length and the space size always hold default values,
// so growing within the block never exposes stale elements (or, in the owning array, deleted pointers).
template <class T> class QvDynArray : public QvDynArrayBase<T> {
    using Base = QvDynArrayBase<T>;

public:
    using Base::GetFirst;
    using Base::GetLast;
    using Base::GetNext;
    using Base::GetPre;

    // initSize default elements in a block of exactly that size; allocUnit is the slack added when growing.
    explicit QvDynArray(long initSize = 0, long allocUnit = 10) : m_allocUnit(std::max(allocUnit, 0L)) {
        if (initSize > 0) {
            Reallocate(initSize, 0);
            if (m_data) this->m_length = initSize;
        }
    }
    QvDynArray(const QvDynArray& src) : Base(), m_allocUnit(src.m_allocUnit) { CopyBlock(src); }
    QvDynArray(const QvDynArrayBase<T>& src) : Base() {
        Reallocate(src.GetLength(), 0);
        if (!m_data) return;
        long i = 0;
        for (const T* e = src.GetFirst(); e; e = src.GetNext(e)) m_data[i++] = *e;
        this->m_length = src.GetLength();
        this->m_curIndex = src.GetCurIndex();
    }
    QvDynArray& operator=(const QvDynArray& src) {
        Base::operator=(src);
        return *this;
    }
    QvDynArray& operator=(const QvDynArrayBase<T>& src) {
        Base::operator=(src);
        return *this;
    }
    ~QvDynArray() override { delete[] m_data; }

    // Grows with alloc-unit slack; shrinking keeps the block.
    void ReAllocate(long n) override { Resize(n); }

    // Exact-size variant: the block becomes exactly n elements, without slack.
    void SetLength(long n, bool keepData) override {
        n = std::max(n, 0L);
        const long kept = keepData ? std::min(this->m_length, n) : 0;
        if (n != m_spaceSize || !m_data) {
            Reallocate(n, kept);
        } else {
            std::fill(m_data + kept, m_data + m_spaceSize, T{});
        }
        this->m_length = m_data ? n : 0;
        if (this->m_curIndex >= this->m_length) this->m_curIndex = -1;
    }

    void Reset() override {
        ClearSlots(0);
        this->m_length = 0;
        this->m_curIndex = -1;
    }

    T& GetCurData() override { return this->IsOut() ? Base::DetachedSlot() : m_data[this->m_curIndex]; }
    void SetCurData(const T& value) override {
        if (!this->IsOut()) m_data[this->m_curIndex] = value;
    }
    void MoveTo(long index) override { this->m_curIndex = this->IsValidIndex(index) ? index : -1; }
    T& operator[](long index) override {
        return this->IsValidIndex(index) ? m_data[index] : Base::DetachedSlot();
    }

    T* GetFirst() override { return this->m_length > 0 ? m_data : nullptr; }
    T* GetNext(const T* element) override {
        const long i = IndexOf(element);
        return i >= 0 && i + 1 < this->m_length ? m_data + i + 1 : nullptr;
    }
    T* GetPre(const T* element) override {
        const long i = IndexOf(element);
        return i > 0 ? m_data + i - 1 : nullptr;
    }
    T* GetLast() override { return this->m_length > 0 ? m_data + this->m_length - 1 : nullptr; }
    const T& GetAt(long index) const override {
        return this->IsValidIndex(index) ? m_data[index] : Base::DetachedSlot();
    }

    // With the cursor at -1 there is nothing to insert before, so the value goes to the end.
    void InsertCur(const T& value) override {
        if (this->IsOut()) {
            this->m_curIndex = Append(value);
            return;
        }
        const long at = this->m_curIndex;
        Insert(at, value);
        this->m_curIndex = at;
    }
    void Insert(long index, const T& value) override {
        if (index < 0 || index > this->m_length) return;
        T copy(value); // value may live in the block that Resize moves
        const long oldLength = this->m_length;
        Resize(oldLength + 1);
        if (this->m_length != oldLength + 1) return;
        std::move_backward(m_data + index, m_data + oldLength, m_data + oldLength + 1);
        m_data[index] = std::move(copy);
        if (this->m_curIndex >= index) ++this->m_curIndex;
    }
    long Append(const T& value) override {
        T copy(value);
        const long at = this->m_length;
        Resize(at + 1);
        if (this->m_length != at + 1) return -1;
        m_data[at] = std::move(copy);
        return at;
    }
    void DelCur() override {
        if (this->IsOut()) return;
        const long at = this->m_curIndex;
        std::move(m_data + at + 1, m_data + this->m_length, m_data + at);
        m_data[this->m_length - 1] = T{};
        --this->m_length;
        if (at >= this->m_length) this->m_curIndex = -1;
    }
    bool Move(long from, long to) override {
        if (!this->IsValidIndex(from) || !this->IsValidIndex(to)) return false;
        if (from < to) {
            std::rotate(m_data + from, m_data + from + 1, m_data + to + 1);
        } else {
            std::rotate(m_data + to, m_data + from, m_data + from + 1);
        }
        long& cur = this->m_curIndex;
        if (cur == from) {
            cur = to;
        } else if (from < cur && cur <= to) {
            --cur;
        } else if (to <= cur && cur < from) {
            ++cur;
        }
        return true;
    }

    // The same search as the base class's, over the block directly instead of one virtual step per
    // element; calls through a base reference get the same answers.
    using Base::Find;
    long Find(const T& value, long start = 0, long end = -1) const {
        const long last = this->ClampEnd(end);
        for (long i = std::max(start, 0L); i <= last; ++i) {
            if (m_data[i] == value) return i;
        }
        return -1;
    }

    long GetAllocUnit() const { return m_allocUnit; }
    void SetAllocUnit(long unit) { m_allocUnit = std::max(unit, 0L); }
    long GetSpaceSize() const { return m_spaceSize; }
    // Exactly n slots; elements beyond n are dropped.
    void SetSpaceSize(long n) {
        n = std::max(n, 0L);
        if (n == m_spaceSize && m_data) return;
        const long kept = std::min(this->m_length, n);
        Reallocate(n, kept);
        this->m_length = m_data ? kept : 0;
        if (this->m_curIndex >= this->m_length) this->m_curIndex = -1;
    }
    // Adopts block, which must come from new T[n]; the array deletes it.
    void Attach(long n, T* block) {
        delete[] m_data;
        m_data = block;
        m_spaceSize = block ? std::max(n, 0L) : 0;
        this->m_length = m_spaceSize;
        this->m_curIndex = -1;
    }

protected:
    // Slots from `from` to the length take default values (the owning array deletes their objects first).
    void ClearSlots(long from) {
        if (m_data && from < this->m_length) std::fill(m_data + from, m_data + this->m_length, T{});
    }

private:
    void Resize(long n) {
        n = std::max(n, 0L);
        if (n > m_spaceSize || (n > 0 && !m_data)) {
            Reallocate(n + m_allocUnit, this->m_length);
        } else {
            ClearSlots(n);
        }
        this->m_length = m_data ? n : 0;
        if (this->m_curIndex >= this->m_length) this->m_curIndex = -1;
    }

    // A new block of exactly space elements holding the first `kept` elements; on allocation failure the
    // data pointer is null and the space size is still the requested one.
    void Reallocate(long space, long kept) {
        // Value-initialised, so scalars and pointers start at zero like every other default element.
        T* block = space > 0 ? new (std::nothrow) T[static_cast<size_t>(space)]() : nullptr;
        if (block && m_data) std::move(m_data, m_data + std::min(kept, space), block);
        delete[] m_data;
        m_data = block;
        m_spaceSize = space;
    }

    void CopyBlock(const QvDynArray& src) {
        Reallocate(src.m_length, 0);
        if (!m_data) return;
        std::copy(src.m_data, src.m_data + src.m_length, m_data);
        this->m_length = src.m_length;
        this->m_curIndex = src.m_curIndex;
    }

    long IndexOf(const T* element) const {
        if (!element || this->m_length == 0) return -1;
        const std::less<const T*> before;
        if (before(element, m_data) || !before(element, m_data + this->m_length)) return -1;
        return static_cast<long>(element - m_data);
    }

    T* m_data = nullptr;
    long m_spaceSize = 0;
    long m_allocUnit = 10;
};
