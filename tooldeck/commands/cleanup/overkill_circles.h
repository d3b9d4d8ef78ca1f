#pragma once
// Pass 3 of the clean-up: circles within each list of the circle index (one radius key, one layer).
// Two circles that pass the property test and have equal centres and radii within the tolerance are
// duplicates; the later one is erased.

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill {

// Centre and radius are finite; other circles are never duplicates, nor do they cover arcs.
bool isSoundCircle(const OdGePoint3d& center, double radius);

// Whether the later circle b duplicates the reference a, the property test included.
bool circlesDuplicate(const OverkillSettings& settings, const CircleRecord& a, const CircleRecord& b);

// Pass 3: erased circles leave the index and run.circles (whose survivors keep their order).
void runCirclePass(OverkillRun& run);

// Drops the flagged records from run.circles and renumbers the index entries that remain.
void removeCircles(OverkillRun& run, const std::vector<char>& erased);

} // namespace qvtd::overkill
