#pragma once
// R12 objects store their groups in one flat list; R2000 and later split them into subclasses, each
// opened by a 100 marker, with the common entity groups first. These functions rewrite the tags of an
// R12 object into that layout, keeping every value and the order within each subclass.

#include "qvad/db/OdDbSymbolTable.h"

namespace qvad::db {

// Also lays out the common types R12 did not have (MTEXT, LWPOLYLINE, HATCH, ...) when they come as a
// flat list. False (and the tags untouched) for a type it does not know.
bool layoutLegacyEntity(OdDbEntity& entity, const OdDbEntity* parent);
void layoutLegacyTableHead(OdDbSymbolTable& table);
void layoutLegacyTableRecord(OdDbSymbolTableRecord& record);

// The subclass marker of a symbol table's records ("AcDbLayerTableRecord" for "LAYER"), or "".
std::string_view recordSubclass(std::string_view tableName);

} // namespace qvad::db
