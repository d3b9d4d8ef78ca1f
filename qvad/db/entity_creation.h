#pragma once
// New entities made in code rather than read from a file or a data list.

#include "qvad/db/OdDbDatabase.h"

#include <memory>
#include <string_view>

namespace qvad::db {

// An entity of the type, of its typed class, with the subclass markers R2000 and later readers
// expect, on layer "0" and with nothing else set; the typed setters fill in the rest. Not yet in the
// drawing: hand it to OdDbDatabase::addOdDbObject.
std::unique_ptr<OdDbEntity> newEntity(OdDbDatabase& db, std::string_view type);

} // namespace qvad::db
