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

std::size_t powerOfTwoAtLeast(std::size_t wanted, std::size_t least) {
    std::size_t size = least;
    while (size < wanted) size *= 2;
    return size;
}

// Element by element: the library's array comparison goes through a call to memcmp.
bool sameCell(const std::array<std::int64_t, 3>& a, const std::array<std::int64_t, 3>& b) {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

} // namespace

std::uint64_t PointGrid::hashOf(const Cell& cell) {
    // Neighbouring cubes must land far apart in the table: odd multipliers per coordinate, then a mix.
    std::uint64_t h = static_cast<std::uint64_t>(cell[0]) * 0x9E3779B97F4A7C15ull +
                      static_cast<std::uint64_t>(cell[1]) * 0xC2B2AE3D27D4EB4Full +
                      static_cast<std::uint64_t>(cell[2]) * 0x165667B19E3779F9ull;
    h ^= h >> 31;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 29;
    return h;
}

PointGrid::PointGrid(double cellSize)
    : m_cellSize(cellSize > 0.0 && std::isfinite(cellSize) ? cellSize : 1.0), m_perCell(1.0 / m_cellSize) {}

std::int64_t PointGrid::index(double coordinate) const {
    // Any rounding here is harmless as long as the index never decreases as the coordinate grows.
    const double scaled = coordinate * m_perCell;
    if (!(scaled > -kLargestIndex)) return static_cast<std::int64_t>(-kLargestIndex);
    if (!(scaled < kLargestIndex)) return static_cast<std::int64_t>(kLargestIndex);
    // The floor by hand: the truncation rounds negative values up.
    const std::int64_t truncated = static_cast<std::int64_t>(scaled);
    return truncated - (static_cast<double>(truncated) > scaled ? 1 : 0);
}

PointGrid::Cell PointGrid::cellOf(const OdGePoint3d& point) const {
    return {index(point.x), index(point.y), index(point.z)};
}

void PointGrid::reserve(std::size_t points) {
    if (!m_filed) m_pending.reserve(points);
}

void PointGrid::add(const OdGePoint3d& point, std::uint32_t value) {
    if (m_filed) {
        // Start over from what was filed.
        m_pending.clear();
        for (const Cube& cube : m_cubes)
            for (std::uint32_t i = 0; i < cube.count; ++i)
                m_pending.push_back({cube.cell, m_values[cube.first + i]});
        m_filed = false;
    }
    m_pending.push_back({cellOf(point), value});
}

void PointGrid::file() {
    // Cubes are numbered as they are first met; counting them and placing the values by those counts
    // keeps each cube's values in the order they were added, without sorting.
    const std::size_t capacity = powerOfTwoAtLeast(2 * m_pending.size(), 16);
    const std::size_t mask = capacity - 1;
    m_table.assign(capacity, 0);
    m_cubes.clear();
    std::vector<std::uint32_t> cubeOf(m_pending.size());
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        const Cell& cell = m_pending[i].cell;
        std::size_t at = hashOf(cell) & mask;
        for (;; at = (at + 1) & mask) {
            const std::uint32_t entry = m_table[at];
            if (entry == 0) {
                m_cubes.push_back({cell, 0, 0});
                m_table[at] = static_cast<std::uint32_t>(m_cubes.size());
                break;
            }
            if (sameCell(m_cubes[entry - 1].cell, cell)) break;
        }
        const std::uint32_t cube = m_table[at] - 1;
        cubeOf[i] = cube;
        ++m_cubes[cube].count;
    }
    std::uint32_t first = 0;
    for (Cube& cube : m_cubes) {
        cube.first = first;
        first += cube.count;
        cube.count = 0;
    }
    m_values.resize(m_pending.size());
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        Cube& cube = m_cubes[cubeOf[i]];
        m_values[cube.first + cube.count++] = m_pending[i].value;
    }

    const std::size_t bits = powerOfTwoAtLeast(8 * m_cubes.size(), 64);
    m_occupied.assign(bits / 64, 0);
    m_occupiedMask = bits - 1;
    for (const Cube& cube : m_cubes) {
        const std::uint64_t bit = hashOf(cube.cell) & m_occupiedMask;
        m_occupied[bit / 64] |= std::uint64_t{1} << (bit & 63);
    }
    m_pending.clear();
    m_pending.shrink_to_fit();
    m_filed = true;
}

const PointGrid::Cube* PointGrid::find(const Cell& cell) const {
    const std::uint64_t hash = hashOf(cell);
    const std::uint64_t bit = hash & m_occupiedMask;
    if (!(m_occupied[bit / 64] & (std::uint64_t{1} << (bit & 63)))) return nullptr;
    const std::size_t mask = m_table.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const std::uint32_t entry = m_table[at];
        if (entry == 0) return nullptr;
        if (sameCell(m_cubes[entry - 1].cell, cell)) return &m_cubes[entry - 1];
    }
}

void PointGrid::appendCube(const Cube& cube, std::vector<std::uint32_t>& found) const {
    const auto from = m_values.begin() + cube.first;
    found.insert(found.end(), from, from + cube.count);
}

void PointGrid::findInBox(const OdGePoint3d& low, const OdGePoint3d& high,
                          std::vector<std::uint32_t>& found) {
    if (!m_filed) file();
    const Cell from = cellOf(low);
    const Cell to = cellOf(high);
    if (sameCell(from, to)) {
        // Most searches reach far less than a cube.
        if (const Cube* cube = find(from)) appendCube(*cube, found);
        return;
    }
    double cubes = 1.0;
    for (int axis = 0; axis < 3; ++axis) cubes *= static_cast<double>(to[axis] - from[axis]) + 1.0;
    if (cubes > kMostCubesPerSearch || cubes > static_cast<double>(m_cubes.size())) {
        // Fewer filled cubes than cubes in the box: walk the filled ones.
        for (const Cube& cube : m_cubes) {
            bool inside = true;
            for (int axis = 0; axis < 3; ++axis)
                inside = inside && cube.cell[axis] >= from[axis] && cube.cell[axis] <= to[axis];
            if (inside) appendCube(cube, found);
        }
        return;
    }
    for (std::int64_t x = from[0]; x <= to[0]; ++x)
        for (std::int64_t y = from[1]; y <= to[1]; ++y)
            for (std::int64_t z = from[2]; z <= to[2]; ++z)
                if (const Cube* cube = find({x, y, z})) appendCube(*cube, found);
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
    const double length = std::sqrt((b - a).lengthSqrd());
    const double pieces = std::ceil(length * m_perCell);
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
