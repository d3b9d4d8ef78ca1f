#include "tooldeck/commands/cleanup/overkill_point_grid.h"

#include <algorithm>
#include <cmath>

namespace qvtd::overkill {
namespace {

// Beyond this many cubes a search walks the filled cubes instead of the cubes of its box.
constexpr double kMostCubesPerSearch = 4096.0;
// Far-off coordinates share the outermost cubes; clamping keeps the cube index monotone in the
// coordinate, which is all the searches rely on.
constexpr double kLargestIndex = 1e15;

} // namespace

std::size_t PointGrid::hashOf(const Cell& cell) {
    // Each coordinate through a full 64-bit mix, so that neighbouring cubes land far apart in the table.
    std::uint64_t h = 0;
    for (const std::int64_t part : cell) {
        std::uint64_t z = (h ^ static_cast<std::uint64_t>(part)) + 0x9E3779B97F4A7C15ull;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        h = z ^ (z >> 31);
    }
    return static_cast<std::size_t>(h);
}

PointGrid::PointGrid(double cellSize) : m_cellSize(cellSize > 0.0 ? cellSize : 1.0) {}

std::int64_t PointGrid::index(double coordinate) const {
    const double scaled = std::floor(coordinate / m_cellSize);
    if (!(scaled > -kLargestIndex)) return static_cast<std::int64_t>(-kLargestIndex);
    if (!(scaled < kLargestIndex)) return static_cast<std::int64_t>(kLargestIndex);
    return static_cast<std::int64_t>(scaled);
}

void PointGrid::add(const OdGePoint3d& point, std::uint32_t value) {
    if (m_filed) {
        // Start over from what was filed.
        m_pending.clear();
        for (const Slot& slot : m_slots)
            for (std::uint32_t i = 0; i < slot.count; ++i)
                m_pending.push_back({slot.cell, m_values[slot.first + i]});
        m_filed = false;
    }
    m_pending.push_back({{index(point.x), index(point.y), index(point.z)}, value});
}

void PointGrid::file() {
    // Stable, so the values of one cube keep the order they were added in.
    std::stable_sort(m_pending.begin(), m_pending.end(),
                     [](const Filed& a, const Filed& b) { return a.cell < b.cell; });
    std::size_t cubes = 0;
    for (std::size_t i = 0; i < m_pending.size(); ++i)
        if (i == 0 || m_pending[i].cell != m_pending[i - 1].cell) ++cubes;
    std::size_t capacity = 16;
    while (capacity < 2 * cubes) capacity *= 2;
    m_slots.assign(capacity, Slot{});
    std::size_t bits = 64;
    while (bits < 8 * cubes) bits *= 2;
    m_occupied.assign(bits / 64, 0);
    m_occupiedMask = bits - 1;
    m_values.clear();
    m_values.reserve(m_pending.size());
    for (std::size_t i = 0; i < m_pending.size();) {
        std::size_t end = i;
        while (end < m_pending.size() && m_pending[end].cell == m_pending[i].cell) ++end;
        const std::size_t hash = hashOf(m_pending[i].cell);
        m_occupied[(hash & m_occupiedMask) / 64] |= std::uint64_t{1} << (hash & 63);
        std::size_t at = hash & (capacity - 1);
        while (m_slots[at].count != 0) at = (at + 1) & (capacity - 1);
        m_slots[at] = {m_pending[i].cell, static_cast<std::uint32_t>(m_values.size()),
                       static_cast<std::uint32_t>(end - i)};
        for (; i < end; ++i) m_values.push_back(m_pending[i].value);
    }
    m_filledCubes = cubes;
    m_pending.clear();
    m_pending.shrink_to_fit();
    m_filed = true;
}

const PointGrid::Slot* PointGrid::find(const Cell& cell) const {
    const std::size_t hash = hashOf(cell);
    if (!(m_occupied[(hash & m_occupiedMask) / 64] & (std::uint64_t{1} << (hash & 63)))) return nullptr;
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.count == 0) return nullptr;
        if (slot.cell == cell) return &slot;
    }
}

void PointGrid::findInBox(const OdGePoint3d& low, const OdGePoint3d& high,
                          std::vector<std::uint32_t>& found) {
    if (!m_filed) file();
    const Cell from{index(low.x), index(low.y), index(low.z)};
    const Cell to{index(high.x), index(high.y), index(high.z)};
    double cubes = 1.0;
    for (int axis = 0; axis < 3; ++axis) cubes *= static_cast<double>(to[axis] - from[axis]) + 1.0;
    if (cubes > kMostCubesPerSearch || cubes > static_cast<double>(m_filledCubes)) {
        // Fewer filled cubes than cubes in the box: walk the filled ones.
        for (const Slot& slot : m_slots) {
            if (slot.count == 0) continue;
            bool inside = true;
            for (int axis = 0; axis < 3; ++axis)
                inside = inside && slot.cell[axis] >= from[axis] && slot.cell[axis] <= to[axis];
            if (inside)
                found.insert(found.end(), m_values.begin() + slot.first,
                             m_values.begin() + slot.first + slot.count);
        }
        return;
    }
    for (std::int64_t x = from[0]; x <= to[0]; ++x)
        for (std::int64_t y = from[1]; y <= to[1]; ++y)
            for (std::int64_t z = from[2]; z <= to[2]; ++z) {
                const Slot* slot = find({x, y, z});
                if (slot)
                    found.insert(found.end(), m_values.begin() + slot->first,
                                 m_values.begin() + slot->first + slot->count);
            }
}

void PointGrid::findNearPoint(const OdGePoint3d& point, double distance, std::vector<std::uint32_t>& found) {
    const OdGeVector3d reach(distance, distance, distance);
    findInBox(point - reach, point + reach, found);
}

void PointGrid::findNearSegment(const OdGePoint3d& a, const OdGePoint3d& b, double distance,
                                std::vector<std::uint32_t>& found) {
    // Pieces no longer than a cube, each searched in its bounding box widened by the distance: every
    // point near the segment is near one piece and so inside that piece's box.
    const OdGeVector3d reach(distance, distance, distance);
    const double length = a.distanceTo(b);
    const double pieces = std::ceil(length / m_cellSize);
    if (!(pieces < kMostCubesPerSearch)) {
        // Too long to walk: one search over its whole box walks the filled cubes instead.
        const OdGePoint3d low(std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z));
        const OdGePoint3d high(std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z));
        findInBox(low - reach, high + reach, found);
        return;
    }
    const int count = std::max(1, static_cast<int>(pieces));
    OdGePoint3d from = a;
    for (int i = 1; i <= count; ++i) {
        const OdGePoint3d to = i == count ? b : a + (b - a) * (static_cast<double>(i) / count);
        const OdGePoint3d low(std::min(from.x, to.x), std::min(from.y, to.y), std::min(from.z, to.z));
        const OdGePoint3d high(std::max(from.x, to.x), std::max(from.y, to.y), std::max(from.z, to.z));
        findInBox(low - reach, high + reach, found);
        from = to;
    }
}

} // namespace qvtd::overkill
