#pragma once
// The small circles that show what a quantity command has taken so far; they go when the command ends.

#include "qvad/api/qvad_api.h"

#include <array>
#include <vector>

namespace qvtd::quantity {

class TemporaryMarkers {
public:
    TemporaryMarkers() = default;
    ~TemporaryMarkers();
    TemporaryMarkers(const TemporaryMarkers&) = delete;
    TemporaryMarkers& operator=(const TemporaryMarkers&) = delete;

    void circleAt(const qv_point centre, double radius);
    // At the entity's first point (its start, centre or insertion point).
    void circleOn(const qv_name entity, double radius);
    void eraseAll();

private:
    std::vector<std::array<long long, 2>> m_circles;
};

} // namespace qvtd::quantity
