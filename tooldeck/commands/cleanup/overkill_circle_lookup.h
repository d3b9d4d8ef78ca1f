#pragma once
// "Is there a circle with this centre?" for the circle index, answered from a grid of centres instead
// of a walk along a list that may hold every bolt hole of a drawing.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qvtd::overkill {

class CircleCentreLookup {
public:
    // Takes the circles of the index under the given radius keys (sorted, the only keys ever asked
    // about or added); queries may use any tolerance up to largestTolerance, and no centre ever asked
    // about or added lies farther than largestCoordinate from the origin on any axis. Without anyLayer,
    // hasCentreOnAnyLayer finds nothing.
    CircleCentreLookup(const CircleIndex& index, std::span<const long long> radiusKeys, bool anyLayer,
                       double largestTolerance, double largestCoordinate);

    // A circle under the radius key and layer whose centre is within tolerance of centre.
    bool hasCentre(long long radiusKey, const std::string& layer, const OdGePoint3d& centre,
                   double tolerance) const;
    // The same under any layer of the radius key.
    bool hasCentreOnAnyLayer(long long radiusKey, const OdGePoint3d& centre, double tolerance) const;

    // A circle entered in the index after construction.
    void add(long long radiusKey, const std::string& layer, const OdGePoint3d& centre);

private:
    struct Cell {
        std::size_t list;
        std::int64_t x, y, z;
        bool operator==(const Cell&) const = default;
    };
    struct CellHash {
        std::size_t operator()(const Cell& cell) const;
    };

    std::int64_t cellOf(double coordinate) const;
    std::size_t listOf(long long radiusKey, const std::string& layer);
    bool hasCentreIn(std::size_t list, const OdGePoint3d& centre, double tolerance) const;
    void insert(std::size_t list, const OdGePoint3d& centre);

    bool m_anyLayer = false;
    double m_cellSize = 0.0;
    std::map<std::pair<long long, std::string>, std::size_t> m_layerLists;
    std::map<long long, std::size_t> m_keyLists;
    std::size_t m_listCount = 0;
    std::unordered_map<Cell, std::vector<OdGePoint3d>, CellHash> m_cells;
};

} // namespace qvtd::overkill
