#pragma once

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill {

// Passes 1 to 3 in their fixed order: lines, arcs (against arcs, then against circles), circles.
void runCurvePasses(OverkillRun& run);

} // namespace qvtd::overkill
