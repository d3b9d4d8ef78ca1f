#pragma once
// A set of objects by address, for the undo journal's "touched already?" test that runs once per
// change: open addressing in one array, so a test costs one or two cache lines and the set frees in
// one go, where a node set allocates and frees once per object.

#include <cstddef>
#include <cstdint>
#include <vector>

class OdDbObject;

class ObjectSet {
public:
    // False when the object was there already.
    bool insert(const OdDbObject* object) {
        if (2 * (m_count + 1) > m_slots.size()) grow();
        std::size_t i = slotFor(object);
        while (m_slots[i]) {
            if (m_slots[i] == object) return false;
            i = (i + 1) & mask();
        }
        m_slots[i] = object;
        ++m_count;
        return true;
    }

    bool contains(const OdDbObject* object) const {
        if (m_count == 0) return false;
        for (std::size_t i = slotFor(object); m_slots[i]; i = (i + 1) & mask())
            if (m_slots[i] == object) return true;
        return false;
    }

    void erase(const OdDbObject* object) {
        if (m_count == 0) return;
        std::size_t i = slotFor(object);
        while (m_slots[i] != object) {
            if (!m_slots[i]) return;
            i = (i + 1) & mask();
        }
        // Pull later members of the run back so that no look-up stops short at the hole.
        for (std::size_t j = (i + 1) & mask(); m_slots[j]; j = (j + 1) & mask()) {
            const std::size_t home = slotFor(m_slots[j]);
            if (((j - home) & mask()) >= ((j - i) & mask())) {
                m_slots[i] = m_slots[j];
                i = j;
            }
        }
        m_slots[i] = nullptr;
        --m_count;
    }

    std::size_t size() const { return m_count; }

private:
    std::size_t mask() const { return m_slots.size() - 1; }
    std::size_t slotFor(const OdDbObject* object) const {
        // Objects are heap blocks a few dozen bytes apart: multiply to spread the low bits.
        const auto bits = reinterpret_cast<std::uintptr_t>(object) * 0x9E3779B97F4A7C15ull;
        return static_cast<std::size_t>(bits >> (64 - m_shift));
    }
    void grow() {
        std::vector<const OdDbObject*> old = std::move(m_slots);
        m_shift = old.empty() ? 4 : m_shift + 1;
        m_slots.assign(std::size_t{1} << m_shift, nullptr);
        m_count = 0;
        for (const OdDbObject* object : old)
            if (object) insert(object);
    }

    std::vector<const OdDbObject*> m_slots;
    int m_shift = 0;
    std::size_t m_count = 0;
};
