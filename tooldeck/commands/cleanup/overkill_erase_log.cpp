#include "tooldeck/commands/cleanup/overkill_erase_log.h"

#include <algorithm>

namespace qvtd::overkill {

void EraseLog::add(std::size_t reference, ObjectKey erased) {
    m_entries.push_back({reference, erased});
}

void EraseLog::commit(OverkillEdits& edits) {
    // Stable: the erasures of one reference keep the order they happened in.
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry& a, const Entry& b) { return a.reference < b.reference; });
    for (const Entry& entry : m_entries) {
        edits.erased.push_back(entry.erased);
        ++edits.erasedTally;
    }
    m_entries.clear();
}

} // namespace qvtd::overkill
