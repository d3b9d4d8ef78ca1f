#pragma once
// Writes what the passes decided into the drawing: erased objects, lines and arcs that absorbed others,
// rebuilt polylines and the circles made from pairs of arcs.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <string>

class OdDbDatabase;

namespace qvtd::overkill {

// spaceName: the block that takes new circles (model space when it is not found).
void applyEdits(OdDbDatabase& db, const OverkillEdits& edits, const std::string& spaceName, double tolerance);

} // namespace qvtd::overkill
