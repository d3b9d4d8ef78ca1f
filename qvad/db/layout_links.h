#pragma once
// From R2000 on, every space block (model space and each paper space) and its LAYOUT object in the
// ACAD_LAYOUT dictionary point at each other: the block record's 340 at the layout, the layout's 330
// (in its AcDbLayout part) at the block record.

#include "qvad/db/OdDbDatabase.h"

namespace qvad::db {

// Relinks layouts whose links are broken, gives a space block without a layout a new one and a layout
// without a space block a new block, and drops dictionary entries that name no layout. Each kind of
// mend is one line in repairs().
void mendLayoutLinks(OdDbDatabase& db);

} // namespace qvad::db
