#pragma once
// Which layers are locked, asked of the layer table once per name while a command runs.

#include <string>
#include <unordered_map>

namespace qvtd {

class LayerLocks {
public:
    bool locked(const std::string& layer);

private:
    std::unordered_map<std::string, bool> m_known;
};

} // namespace qvtd
