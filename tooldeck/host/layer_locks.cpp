#include "tooldeck/host/layer_locks.h"

#include "tooldeck/host/data_list.h"

namespace qvtd {

namespace {
constexpr long kLockedFlag = 4;
}

bool LayerLocks::locked(const std::string& layer) {
    const auto known = m_known.find(layer);
    if (known != m_known.end()) return known->second;
    DataList record;
    const bool isLocked = qvdbTblSearch("LAYER", layer.c_str(), 0, record.out()) == QV_NORM &&
                          (record.integer(70) & kLockedFlag) != 0;
    m_known.emplace(layer, isLocked);
    return isLocked;
}

} // namespace qvtd
