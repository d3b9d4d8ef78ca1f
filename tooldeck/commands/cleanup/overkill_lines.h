#pragma once
// Pass 1 of the clean-up: lines against lines.
//
// The collinear merge of a later line B into the reference A (e = comparison tolerance):
// - B lies on A's carrier when the directions are parallel within e and both of B's end points are
//   within e of A's infinite line;
// - B's end points are projected on A's carrier as parameters t along A (A runs from t = 0 to its
//   length L);
// - with combineOverlapping on, B merges when the two intervals share more than e, or when one lies
//   within the other (with e to spare);
// - with combineEndToEnd on, B merges when the intervals only touch: the gap or the shared part is at
//   most e;
// - the merged line runs from the smallest to the largest parameter along A's own direction, so A's
//   start stays on the start side; an end that does not move keeps its exact coordinates.
// With both options off only exact duplicates are erased.

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill {

enum class LineRelation { None, Duplicate, Merged };

struct LineComparison {
    LineRelation relation = LineRelation::None;
    bool grew = false; // a merge that moved one of A's ends
    OdGePoint3d start; // A after a merge
    OdGePoint3d end;
};

// Every number of the line is finite; other lines never relate to anything.
bool isSoundLine(const LineRecord& line);

// What becomes of the later line b against the reference a, the property test included.
LineComparison compareLines(const OverkillSettings& settings, const LineRecord& a, const LineRecord& b);

// Pass 1 over run.lines: erases duplicates and absorbed lines (they leave run.lines), writes grown
// lines into their records and into run.edits.
void runLinePass(OverkillRun& run);

} // namespace qvtd::overkill
