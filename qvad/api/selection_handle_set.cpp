#include "qvad/api/selection_handle_set.h"

#include <bit>
#include <cstdint>

namespace qvad::api {

std::size_t HandleSet::home(qvad::Handle handle) const {
    // Handles mostly come in runs, which then fill neighbouring slots and are read in memory order;
    // the bits above the table's size are mixed in so that handles a table size apart do not pile up.
    const int bits = std::countr_zero(m_slots.size());
    const auto h = static_cast<std::uint64_t>(handle);
    const std::uint64_t spread = h + (h >> bits) * 0x9E3779B97F4A7C15ULL;
    return static_cast<std::size_t>(spread) & (m_slots.size() - 1);
}

std::size_t HandleSet::slotOf(qvad::Handle handle) const {
    const std::size_t mask = m_slots.size() - 1;
    std::size_t i = home(handle);
    while (m_slots[i] != 0 && m_slots[i] != handle) i = (i + 1) & mask;
    return i;
}

void HandleSet::reserve(std::size_t count) {
    std::size_t slots = m_slots.empty() ? 16 : m_slots.size();
    while (2 * count > slots) slots *= 2;
    if (slots > m_slots.size()) rehash(slots);
}

void HandleSet::grow() {
    rehash(m_slots.empty() ? 16 : m_slots.size() * 2);
}

void HandleSet::rehash(std::size_t slots) {
    std::vector<qvad::Handle> old = std::move(m_slots);
    m_slots.assign(slots, 0);
    for (qvad::Handle h : old)
        if (h != 0) m_slots[slotOf(h)] = h;
}

bool HandleSet::insert(qvad::Handle handle) {
    if (handle == 0) {
        const bool added = !m_hasNull;
        m_hasNull = true;
        return added;
    }
    if (2 * (m_count + 1) > m_slots.size()) grow();
    const std::size_t i = slotOf(handle);
    if (m_slots[i] == handle) return false;
    m_slots[i] = handle;
    ++m_count;
    return true;
}

bool HandleSet::contains(qvad::Handle handle) const {
    if (handle == 0) return m_hasNull;
    return m_count != 0 && m_slots[slotOf(handle)] == handle;
}

bool HandleSet::erase(qvad::Handle handle) {
    if (handle == 0) {
        const bool removed = m_hasNull;
        m_hasNull = false;
        return removed;
    }
    if (m_count == 0) return false;
    std::size_t hole = slotOf(handle);
    if (m_slots[hole] != handle) return false;
    m_slots[hole] = 0;
    --m_count;
    // Later handles of the run move back into the hole when it lies on their way from home, so that
    // every handle stays reachable without markers of removed ones.
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t j = (hole + 1) & mask; m_slots[j] != 0; j = (j + 1) & mask) {
        const std::size_t k = home(m_slots[j]);
        const bool stays = hole <= j ? (hole < k && k <= j) : (hole < k || k <= j);
        if (stays) continue;
        m_slots[hole] = m_slots[j];
        m_slots[j] = 0;
        hole = j;
    }
    return true;
}

void HandleSet::clear() {
    m_slots.clear();
    m_count = 0;
    m_hasNull = false;
}

} // namespace qvad::api
