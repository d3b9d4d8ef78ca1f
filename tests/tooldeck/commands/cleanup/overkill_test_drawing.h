#pragma once
// Records for the clean-up pass tests: single ones built by hand, and whole random drawings full of
// duplicates, near duplicates, overlaps and pieces meeting end to end.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <cstdint>
#include <string>

namespace qvtd::overkill::testing {

LineRecord makeLine(ObjectKey key, OdGePoint3d start, OdGePoint3d end);
ArcRecord makeArc(ObjectKey key, OdGePoint3d center, double radius, double startAngle, double endAngle);
CircleRecord makeCircle(ObjectKey key, OdGePoint3d center, double radius);

// Puts the record on a layer: its handle and its name go together.
template <typename Record> Record onLayer(Record record, qvad::Handle layer) {
    record.props.layer = layer;
    if constexpr (!std::is_same_v<Record, LineRecord>) record.layerName = "L" + std::to_string(layer);
    return record;
}

struct RandomDrawingShape {
    std::uint32_t seed = 1;
    int lines = 0;
    int arcs = 0;
    int circles = 0;
    int spread = 20;     // the drawing covers spread x spread units
    OdGeVector3d offset; // where the drawing lies: far from the origin, rounding grows
};

// Fills run.lines, run.arcs and the circle index (run.settings must be set: the index and the
// near duplicates depend on the tolerance).
void fillRandomDrawing(OverkillRun& run, const RandomDrawingShape& shape);

} // namespace qvtd::overkill::testing
