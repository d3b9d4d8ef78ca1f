#pragma once
// What a line lost from a file leaves behind in its structure: header variables without a name or a
// value, tables without a name, records and entities without their subclass markers. Each mend is
// one line in repairs().

#include "qvad/db/OdDbDatabase.h"

namespace qvad::db {

// A header variable needs a "$" name and a value; one without either is dropped.
void dropBrokenHeaderVariables(OdDbDatabase& db);

// A table without a name takes the type of its records, or joins the table of that type; an empty
// one goes.
void nameNamelessTables(OdDbDatabase& db);

// Dictionaries lose keys without handles and handles without keys; tables of a kind DXF does not
// have (made from a record whose type was damaged) are dropped.
void dropBrokenEntriesAndTables(OdDbDatabase& db);

// Records and entities of R12 types that lost their subclass markers get them back.
void restoreSubclassMarkers(OdDbDatabase& db);

} // namespace qvad::db
