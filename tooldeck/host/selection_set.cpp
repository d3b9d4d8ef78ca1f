#include "tooldeck/host/selection_set.h"

namespace qvtd {

int SelectionSet::select(const char* mode, const void* point1, const void* point2, const qv_resbuf* filter) {
    release();
    const int status = qvedSSGet(mode, point1, point2, filter, m_name);
    m_held = status == QV_NORM;
    return status;
}

void SelectionSet::adopt(const qv_name set) {
    release();
    m_name[0] = set[0];
    m_name[1] = set[1];
    m_held = true;
}

bool SelectionSet::add(const qv_name entity) {
    if (m_held) return qvedSSAdd(entity, m_name, m_name) == QV_NORM;
    m_held = qvedSSAdd(entity, nullptr, m_name) == QV_NORM;
    return m_held;
}

void SelectionSet::release() {
    if (m_held) qvedSSFree(m_name);
    m_held = false;
}

long SelectionSet::length() const {
    long count = 0;
    if (m_held) qvedSSLength(m_name, &count);
    return count;
}

std::vector<EntityName> SelectionSet::members() const {
    std::vector<EntityName> names;
    const long count = length();
    names.reserve(static_cast<std::size_t>(count));
    for (long i = 0; i < count; ++i) {
        EntityName entity{};
        if (qvedSSName(m_name, i, entity.data()) == QV_NORM) names.push_back(entity);
    }
    return names;
}

bool SelectionSet::makePickFirst() const {
    return m_held && qvedSSSetFirst(m_name, m_name) == QV_NORM;
}

} // namespace qvtd
