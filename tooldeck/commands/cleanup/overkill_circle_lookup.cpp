#include "tooldeck/commands/cleanup/overkill_circle_lookup.h"

#include <algorithm>
#include <cmath>

namespace qvtd::overkill {

CircleCentreLookup::CircleCentreLookup(const CircleIndex& index, std::span<const long long> radiusKeys,
                                       bool anyLayer, double largestTolerance, double largestCoordinate)
    : m_anyLayer(anyLayer) {
    // Twice the tolerance, and coarse enough that rounding a coordinate to its cell is off by far less
    // than a cell, so an equal centre always lies in one of the 27 neighbouring cells.
    m_cellSize = 2.0 * std::max(largestTolerance, 1e-10);
    if (std::isfinite(largestCoordinate)) m_cellSize = std::max(m_cellSize, 1e-14 * largestCoordinate);
    // Only the keys asked about: circles of other sizes can never answer.
    std::vector<const CircleIndex::value_type*> wanted;
    std::size_t count = 0;
    for (long long key : radiusKeys)
        if (auto found = index.find(key); found != index.end()) {
            wanted.push_back(&*found);
            for (const auto& [layer, entries] : found->second) count += entries.size();
        }
    // Growing the table as the centres come would rehash it a dozen times for a drawing full of circles.
    m_cells.reserve((anyLayer ? 2 : 1) * count);
    for (const auto* byKey : wanted)
        for (const auto& [layer, entries] : byKey->second)
            for (const CircleEntry& entry : entries) add(byKey->first, layer, entry.center);
}

std::size_t CircleCentreLookup::CellHash::operator()(const Cell& cell) const {
    std::uint64_t h = cell.list * 0x9E3779B97F4A7C15ULL;
    for (std::int64_t v : {cell.x, cell.y, cell.z})
        h = (h ^ static_cast<std::uint64_t>(v)) * 0x100000001B3ULL;
    return static_cast<std::size_t>(h ^ (h >> 29));
}

std::int64_t CircleCentreLookup::cellOf(double coordinate) const {
    // Far-out or broken coordinates share the outermost cells: slower, never wrong.
    const double cell = std::floor(coordinate / m_cellSize);
    constexpr double kLimit = 4e18;
    if (!(cell > -kLimit)) return static_cast<std::int64_t>(-kLimit);
    if (!(cell < kLimit)) return static_cast<std::int64_t>(kLimit);
    return static_cast<std::int64_t>(cell);
}

std::size_t CircleCentreLookup::listOf(long long radiusKey, const std::string& layer) {
    auto [found, added] = m_layerLists.try_emplace({radiusKey, layer}, m_listCount);
    if (added) ++m_listCount;
    return found->second;
}

void CircleCentreLookup::insert(std::size_t list, const OdGePoint3d& centre) {
    m_cells[{list, cellOf(centre.x), cellOf(centre.y), cellOf(centre.z)}].push_back(centre);
}

void CircleCentreLookup::add(long long radiusKey, const std::string& layer, const OdGePoint3d& centre) {
    insert(listOf(radiusKey, layer), centre);
    if (!m_anyLayer) return;
    auto [found, added] = m_keyLists.try_emplace(radiusKey, m_listCount);
    if (added) ++m_listCount;
    insert(found->second, centre);
}

bool CircleCentreLookup::hasCentreIn(std::size_t list, const OdGePoint3d& centre, double tolerance) const {
    // The cells are at least as wide as any tolerance, so a match lies in a neighbouring cell.
    const std::int64_t x = cellOf(centre.x), y = cellOf(centre.y), z = cellOf(centre.z);
    const OdGeTol tol(tolerance);
    for (std::int64_t dx = -1; dx <= 1; ++dx)
        for (std::int64_t dy = -1; dy <= 1; ++dy)
            for (std::int64_t dz = -1; dz <= 1; ++dz) {
                const auto found = m_cells.find({list, x + dx, y + dy, z + dz});
                if (found == m_cells.end()) continue;
                for (const OdGePoint3d& candidate : found->second)
                    if (candidate.isEqualTo(centre, tol)) return true;
            }
    return false;
}

bool CircleCentreLookup::hasCentre(long long radiusKey, const std::string& layer, const OdGePoint3d& centre,
                                   double tolerance) const {
    const auto found = m_layerLists.find({radiusKey, layer});
    return found != m_layerLists.end() && hasCentreIn(found->second, centre, tolerance);
}

bool CircleCentreLookup::hasCentreOnAnyLayer(long long radiusKey, const OdGePoint3d& centre,
                                             double tolerance) const {
    const auto found = m_keyLists.find(radiusKey);
    return found != m_keyLists.end() && hasCentreIn(found->second, centre, tolerance);
}

} // namespace qvtd::overkill
