#pragma once
// Membership of a selection set: handles in one open-addressed array, as sets of a million entities
// are built and dropped whole, which a node per handle makes slow both ways.

#include "qvad/db/handle.h"

#include <cstddef>
#include <vector>

namespace qvad::api {

class HandleSet {
public:
    // False when the handle was already there.
    bool insert(qvad::Handle handle);
    // False when it was not there.
    bool erase(qvad::Handle handle);
    bool contains(qvad::Handle handle) const;
    void clear();
    // Room for this many handles without growing on the way.
    void reserve(std::size_t count);
    std::size_t size() const { return m_count + (m_hasNull ? 1 : 0); }

private:
    std::size_t home(qvad::Handle handle) const;
    // Where the handle stands, or the empty slot where it would go.
    std::size_t slotOf(qvad::Handle handle) const;
    void grow();
    void rehash(std::size_t slots);

    std::vector<qvad::Handle> m_slots; // 0 marks an empty slot, so handle 0 is kept apart
    std::size_t m_count = 0;
    bool m_hasNull = false;
};

} // namespace qvad::api
