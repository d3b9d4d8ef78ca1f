#pragma once
// Erasures found group by group, handed on in the order a scan over the whole list would meet them:
// by reference first, and for one reference in the order they happened.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <cstddef>
#include <vector>

namespace qvtd::overkill {

class EraseLog {
public:
    // `reference` is the list position of the record that caused the erasure.
    void add(std::size_t reference, ObjectKey erased);
    // Appends the erasures to edits.erased and counts them in the erased tally.
    void commit(OverkillEdits& edits);

private:
    struct Entry {
        std::size_t reference;
        ObjectKey erased;
    };
    std::vector<Entry> m_entries;
};

// Keeps the items whose flag is not set, in order.
template <typename Item> void removeFlagged(std::vector<Item>& items, const std::vector<char>& flagged) {
    std::size_t kept = 0;
    for (std::size_t k = 0; k < items.size(); ++k)
        if (!flagged[k]) {
            if (kept != k) items[kept] = std::move(items[k]);
            ++kept;
        }
    items.resize(kept);
}

} // namespace qvtd::overkill
