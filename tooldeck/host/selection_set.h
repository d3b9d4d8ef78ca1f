#pragma once
// A selection set the command obtained from the host, freed on every way out of the command.

#include "qvad/api/qvad_api.h"

#include <array>
#include <vector>

namespace qvtd {

using EntityName = std::array<long long, 2>;

class SelectionSet {
public:
    SelectionSet() = default;
    ~SelectionSet() { release(); }
    SelectionSet(const SelectionSet&) = delete;
    SelectionSet& operator=(const SelectionSet&) = delete;

    // qvedSSGet with the host's modes (null asks "Select objects:"); what was held is freed first.
    int select(const char* mode = nullptr, const void* point1 = nullptr, const void* point2 = nullptr,
               const qv_resbuf* filter = nullptr);
    // Takes over a set the command got elsewhere (the frame's pick-first set, say).
    void adopt(const qv_name set);
    // Adds an entity, making the set on the first one.
    bool add(const qv_name entity);
    void release();

    bool held() const { return m_held; }
    const qv_name& name() const { return m_name; }
    long length() const;
    std::vector<EntityName> members() const;
    // Leaves the set as the pick-first (and previous) set for the commands that follow.
    bool makePickFirst() const;

private:
    qv_name m_name = {0, 0};
    bool m_held = false;
};

} // namespace qvtd
