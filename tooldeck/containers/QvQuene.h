#pragma once

#include <vector>

// A first-in first-out collector; the searches append the positions they hit to it.
template <class T> class QvQuene {
public:
    // Returns the position of the new entry counted from the current head.
    long Append(const T& value) {
        m_items.push_back(value);
        return GetLength() - 1;
    }

    // Takes the oldest entry off; false when the queue is empty.
    bool PopHead(T& out) {
        if (IsEmpty()) return false;
        out = m_items[m_head++];
        if (m_head == static_cast<long>(m_items.size())) Reset();
        return true;
    }

    long GetLength() const { return static_cast<long>(m_items.size()) - m_head; }
    bool IsEmpty() const { return GetLength() == 0; }
    const T& GetAt(long i) const { return m_items[m_head + i]; }
    T& operator[](long i) { return m_items[m_head + i]; }

    void Reset() {
        m_items.clear();
        m_head = 0;
    }

private:
    std::vector<T> m_items;
    // Entries before the head have been taken; they are dropped together once the queue runs empty.
    long m_head = 0;
};
