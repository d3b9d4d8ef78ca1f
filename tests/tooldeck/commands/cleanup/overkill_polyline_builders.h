#pragma once
// Short ways of writing the records the polyline pass tests feed in.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <vector>

namespace qvtd::overkill::testing {

struct Corner {
    double x;
    double y;
    double bulge = 0.0;
};

inline PolylineRecord polyline(ObjectKey key, std::initializer_list<Corner> corners, bool closed = false,
                               PolylineKind kind = PolylineKind::Lightweight) {
    PolylineRecord record;
    record.key = key;
    record.kind = kind;
    record.closed = closed;
    for (const Corner& corner : corners) record.vertices.push_back({{corner.x, corner.y, 0.0}, corner.bulge});
    return record;
}

inline LineRecord line(ObjectKey key, double x1, double y1, double x2, double y2) {
    LineRecord record;
    record.key = key;
    record.start = {x1, y1, 0.0};
    record.end = {x2, y2, 0.0};
    return record;
}

inline ArcRecord arc(ObjectKey key, double cx, double cy, double radius, double startAngle, double endAngle) {
    ArcRecord record;
    record.key = key;
    record.center = {cx, cy, 0.0};
    record.radius = radius;
    record.startAngle = startAngle;
    record.endAngle = endAngle;
    return record;
}

inline std::set<ObjectKey> erasedSet(const OverkillEdits& edits) {
    return {edits.erased.begin(), edits.erased.end()};
}

// The vertices of a rebuilt polyline as plain numbers, for readable comparisons.
inline std::vector<std::vector<double>> cornersOf(const PolylineRecord& record) {
    std::vector<std::vector<double>> corners;
    for (const PolylineVertex& v : record.vertices) corners.push_back({v.point.x, v.point.y, v.bulge});
    return corners;
}

} // namespace qvtd::overkill::testing
