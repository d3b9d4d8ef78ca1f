#pragma once
// Turns what the reader found in a file into a consistent drawing: blocks tied to their records,
// entities to their spaces, every object with a unique handle, old R12 structure brought up to date,
// and whatever is broken mended, each mend reported in repairs().

#include "qvad/db/OdDbDatabase.h"

#include <vector>

namespace qvad::db {

struct BlockDefinition {
    OdDbEntity* begin = nullptr;
    std::vector<OdDbEntity*> entities;
    OdDbEntity* end = nullptr;
};

struct HandleRepair {
    OdDbObject* object;
    Handle original; // 0 when the file gave none
};

struct LoadedStructure {
    std::vector<BlockDefinition> blocks;
    std::vector<OdDbEntity*> entities; // the ENTITIES section
    std::vector<HandleRepair> needHandle;
};

void assembleDrawing(OdDbDatabase& db, LoadedStructure& loaded);

// Brings an R12 (or older) drawing to the R2000 structure: handles, owners, subclass markers,
// the BLOCK_RECORD table, layouts and the OBJECTS section. A drawing whose text holds characters its
// code page cannot becomes R2007, where text is UTF-8.
void upgradeLegacyDrawing(OdDbDatabase& db);

// Checks and mends names, references, required table entries, blocks, layouts, dictionaries and
// owners.
void auditDrawing(OdDbDatabase& db);

void addSeqend(OdDbDatabase& db, OdDbComplexEntity& parent);

} // namespace qvad::db
