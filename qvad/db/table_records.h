#pragma once
// Making symbol table records the way R2000 and later store them, and keeping a table's head in step.

#include "qvad/db/OdDbDatabase.h"

#include <vector>

namespace qvad::db {

// A new record of the table's kind: handle, owner and subclass markers, then the given data tags
// (name first). The table's record count is updated.
OdDbSymbolTableRecord* addTableRecord(OdDbDatabase& db, OdDbSymbolTable& table, std::vector<Tag> data);

// Group 70 of the head counts the table's live records.
void updateRecordCount(OdDbSymbolTable& table);

} // namespace qvad::db
