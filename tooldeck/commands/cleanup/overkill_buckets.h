#pragma once
// Pass 7 of the clean-up: the objects of every other class, one bucket per exact run-time class,
// compared among themselves.

#include "qvad/db/OdDbEntity.h"
#include "tooldeck/commands/cleanup/overkill_records.h"
#include "tooldeck/commands/cleanup/overkill_settings.h"

#include <vector>

namespace qvtd::overkill {

struct BucketMember {
    ObjectKey key = 0;
    Properties props;
    const OdDbEntity* entity = nullptr; // a member without one is left alone
};

// The pairwise scheme over one bucket (all members of one exact class, in selection order): the
// earlier member is the reference, and a later member that passes the property test and is the same
// object (sameObject) is erased: edits.erased gets its key in the order a plain pairwise run would
// erase them, and edits.erasedTally grows by one. Never touches the drawing.
void runBucketPass(const std::vector<BucketMember>& members, const OverkillSettings& settings,
                   OverkillEdits& edits);

} // namespace qvtd::overkill
