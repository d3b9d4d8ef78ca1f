#pragma once

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill {

// Passes 1 to 3 in their fixed order: lines, arcs (against arcs, then against circles), circles.
void runCurvePasses(OverkillRun& run);

// Passes 1 to 6 with the list clearing that follows them, as runCurvePasses then runPolylinePasses
// would run them, with what does not depend on the curve passes done on a second thread beside them.
void runCurveAndPolylinePasses(OverkillRun& run);

} // namespace qvtd::overkill
