#pragma once
// Entities name their layer (8), linetype (6), text style (7) and dimension style (3); layers name their
// linetype; extended data names its application (1001). Every such name has to be a record of its
// table, and a layer name has to be one a symbol table can hold.

#include "qvad/db/OdDbDatabase.h"

#include <string>

namespace qvad::db {

// Creates the records that names point to but the tables lack (a user would rather get the layer back
// than lose the assignment) and renames layers whose names hold forbidden characters, everywhere they
// are used. One line in repairs() per kind of mend; the records added are not reported when
// `reportAdded` is false (R12 let entities create their layers just by naming them).
void mendSymbolReferences(OdDbDatabase& db, bool reportAdded = true);

// The characters < > / \ " : ; ? * = ` and control characters cannot be in a symbol name (a leading * can).
bool isValidSymbolName(std::string_view name);
// The name with each forbidden character replaced by '_'.
std::string validSymbolName(std::string_view name);

} // namespace qvad::db
