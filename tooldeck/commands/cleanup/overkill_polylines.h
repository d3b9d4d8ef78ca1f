#pragma once
// The polyline passes of the duplicate clean-up: lightweight, then 2D, then 3D polylines, each against
// the polylines of its own list and against what is left of the line and arc lists.

#include "tooldeck/commands/cleanup/overkill_polyline_segments.h"
#include "tooldeck/commands/cleanup/overkill_records.h"

#include <array>
#include <cstddef>
#include <vector>

namespace qvtd::overkill {

// Passes 4 to 6 with the list clearing that follows each.
void runPolylinePasses(OverkillRun& run);

// The steps of one pass, shared with the plain pairwise check in the tests.

// A polyline of a pass with its segments; erased ones stay in place, marked, until the pass ends.
struct PassPolyline {
    PolylineRecord record;
    std::vector<PolylineSegment> segments;
    bool erased = false;
};

// Splits every polyline of the list: degenerate ones are erased, ones that lost vertices rebuilt.
std::vector<PassPolyline> preparePolylines(std::vector<PolylineRecord> list, OverkillEdits& edits, double e);

// What the reference does to a later polyline.
struct PolylineVerdict {
    enum Action { Keep, Erase, Trim } action = Keep;
    std::size_t leadingCovered = 0;  // Trim: segments to take off the start
    std::size_t trailingCovered = 0; // Trim: segments to take off the end
};
PolylineVerdict comparePolylines(const OverkillSettings& settings, const PassPolyline& reference,
                                 const PassPolyline& other);

// Applies a verdict to the later polyline and records it in edits.
void applyVerdict(const PolylineVerdict& verdict, PassPolyline& other, OverkillEdits& edits, double e);

// A line from the line list lying wholly on one segment of the polyline (property test included).
bool lineOnPolyline(const OverkillSettings& settings, const PassPolyline& polyline, const LineRecord& line,
                    const PolylineSegment& segment);
// An arc from the arc list lying wholly on one arc segment of the polyline (property test included).
bool arcOnPolyline(const OverkillSettings& settings, const PassPolyline& polyline, const ArcRecord& arc,
                   const PolylineSegment& segment);

// The survivors of a pass, in list order.
std::vector<PolylineRecord> survivingPolylines(std::vector<PassPolyline>&& polylines);

// Passes 4 to 6 in two steps. The first needs only each pass's own polylines (splitting, then
// polyline against polyline), so it may run while the line and arc passes do: it reads only
// run.settings and takes the three polyline lists. The second meets what the line and arc passes left
// of their lists, pass by pass, with the list clearing that follows each.
struct PolylinePassStart {
    std::vector<PassPolyline> polylines;
    OverkillEdits edits; // what splitting and comparing erased and rebuilt
};
using PolylinePassStarts = std::array<PolylinePassStart, 3>; // lightweight, 2D, 3D
PolylinePassStarts startPolylinePasses(OverkillRun& run);
void finishPolylinePasses(OverkillRun& run, PolylinePassStarts&& starts);

} // namespace qvtd::overkill
