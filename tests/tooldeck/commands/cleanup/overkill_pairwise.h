#pragma once
// The plain definition of passes 1 to 3: every pair of each list, in list order, no grouping. The
// grouped passes must give exactly what this gives.

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill::testing {

void pairwiseCurvePasses(OverkillRun& run);

} // namespace qvtd::overkill::testing
