#pragma once
// The collection step of Overkill: the picked objects, read once from the drawing into the run's lists
// (lines, arcs, the circle index, polylines) and class buckets, in selection order. Objects on frozen,
// locked or off layers, and objects that cannot be read, are left out.

#include "qvad/api/qvad_api.h"
#include "qvad/db/OdRxClass.h"
#include "tooldeck/commands/cleanup/overkill_buckets.h"
#include "tooldeck/commands/cleanup/overkill_records.h"

#include <string>
#include <utility>
#include <vector>

class OdDbDatabase;

namespace qvtd::overkill {

struct OverkillWork {
    OverkillRun run;
    // Every other class, each with its members in selection order, in the order first met.
    std::vector<std::pair<const OdRxClass*, std::vector<BucketMember>>> buckets;
    // The owner block of the first object read: where a circle made from two arcs goes.
    std::string spaceName;
    OdDbDatabase* database = nullptr; // the drawing the objects belong to
};

// Reads the selection set. Fewer than two objects read nothing (there is nothing to compare).
void collectSelection(const qv_name selection, OverkillWork& work);

} // namespace qvtd::overkill
