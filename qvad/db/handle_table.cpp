#include "qvad/db/handle_table.h"

#include <algorithm>

OdDbObject* HandleTable::findFar(qvad::Handle h) const {
    auto it = m_far.find(h);
    return it == m_far.end() ? nullptr : it->second;
}

void HandleTable::growDense(qvad::Handle h) {
    // Doubling keeps the moves from the map below rare however the handles arrive.
    const std::size_t grown = std::max<std::size_t>(h + 1, std::min(2 * m_dense.size(), denseLimit() + 1));
    m_dense.resize(grown, nullptr);
    for (auto it = m_far.begin(); it != m_far.end();) {
        if (it->first < grown) {
            m_dense[it->first] = it->second;
            it = m_far.erase(it);
        } else {
            ++it;
        }
    }
}

void HandleTable::set(qvad::Handle h, OdDbObject* object) {
    if (h >= m_dense.size() && h <= denseLimit()) growDense(h);
    if (h < m_dense.size()) {
        if (!m_dense[h]) ++m_count;
        m_dense[h] = object;
        return;
    }
    if (m_far.insert_or_assign(h, object).second) ++m_count;
}

void HandleTable::erase(qvad::Handle h) {
    if (h < m_dense.size()) {
        if (m_dense[h]) --m_count;
        m_dense[h] = nullptr;
        return;
    }
    m_count -= m_far.erase(h);
}

void HandleTable::reserve(std::size_t count) {
    m_dense.reserve(count + count / 4);
}
