#pragma once
// Points filed by the cube of a regular grid they fall in, so that a pass finds every point near a
// place or near a segment by looking into a few cubes instead of at every point. The searches are
// conservative: every filed point within the given distance is reported (often with others, and a
// point may be reported more than once, in no particular order), and the caller makes the exact test.

#include "qvad/ge/point3d.h"

#include <array>
#include <cstdint>
#include <vector>

namespace qvtd::overkill {

class PointGrid {
public:
    // cellSize must be positive; searches are cheapest when it is near the length of typical segments.
    explicit PointGrid(double cellSize);

    // Room for this many points, when the caller knows.
    void reserve(std::size_t points);
    // Points are filed until the first search; adding after it starts the filing over.
    void add(const OdGePoint3d& point, std::uint32_t value);

    // Appends the values of the points within distance of point (and maybe some others) to found.
    void findNearPoint(const OdGePoint3d& point, double distance, std::vector<std::uint32_t>& found);
    // The same for the points within distance of the segment from a to b.
    void findNearSegment(const OdGePoint3d& a, const OdGePoint3d& b, double distance,
                         std::vector<std::uint32_t>& found);

private:
    using Cell = std::array<std::int64_t, 3>;
    struct Filed {
        Cell cell;
        std::uint32_t value;
    };
    // A filled cube: its values are m_values[first, first + count), in the order they were added.
    struct Cube {
        Cell cell;
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };

    std::int64_t index(double coordinate) const;
    Cell cellOf(const OdGePoint3d& point) const;
    static std::uint64_t hashOf(const Cell& cell);
    void file();
    const Cube* find(const Cell& cell) const;
    void appendCube(const Cube& cube, std::vector<std::uint32_t>& found) const;
    void findInBox(const OdGePoint3d& low, const OdGePoint3d& high, std::vector<std::uint32_t>& found);

    double m_cellSize;
    double m_perCell; // 1 / m_cellSize
    std::vector<Filed> m_pending;
    bool m_filed = false;
    std::vector<Cube> m_cubes;
    std::vector<std::uint32_t> m_values;
    // Open-addressed table of m_cubes positions plus one (0: empty), a power of two long and at most
    // half full.
    std::vector<std::uint32_t> m_table;
    // One bit per hash value (of eight times as many as there are filled cubes): most searched cubes
    // are empty, and this small table answers that without touching the large one.
    std::vector<std::uint64_t> m_occupied;
    std::uint64_t m_occupiedMask = 0;
};

} // namespace qvtd::overkill
