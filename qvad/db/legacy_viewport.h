#pragma once
// An R12 VIEWPORT keeps its view (target, direction, height, snap, grid, frozen layers) in the MVIEW
// extended data of the ACAD application; R2000 has groups of its own for them.

#include "qvad/db/OdDbEntity.h"

namespace qvad::db {

// Adds the R2000 view groups read from the MVIEW data, before the extended data, which stays as it
// was. A viewport without MVIEW data is left alone.
void addViewportFields(OdDbEntity& viewport);

} // namespace qvad::db
