#pragma once
// The polyline passes done the plain way, every pair in list order, as the yardstick the grouped
// passes are held against.

#include "tooldeck/commands/cleanup/overkill_records.h"

namespace qvtd::overkill::testing {

void runPolylinePassesPairwise(OverkillRun& run);

} // namespace qvtd::overkill::testing
