#pragma once
// The three parts of every block kept together: its BLOCK_RECORD in the BLOCK_RECORD table, its BLOCK
// and ENDBLK in the BLOCKS section, and its place in the drawing's block list.

#include "qvad/db/OdDbDatabase.h"

namespace qvad::db {

// A new record named so, in the BLOCK_RECORD table when there is one; not yet in the block list.
OdDbBlockTableRecord* newBlockRecord(OdDbDatabase& db, std::string_view name);

// BLOCK and ENDBLK as R2000 and later write them, owned by the record.
OdDbEntity* newBlockBegin(OdDbDatabase& db, const OdDbBlockTableRecord& record);
OdDbEntity* newBlockEnd(OdDbDatabase& db, const OdDbBlockTableRecord& record, std::string_view layer = "0");

// Makes the BLOCK_RECORD table when it is missing, puts every block's record in it, and gives every
// record its BLOCK and ENDBLK. Reports in repairs() what a user's drawing lost; the host's own
// model and paper space blocks are completed without a word.
void completeBlockStructure(OdDbDatabase& db, bool report);

// A name no block has yet: the stem followed by the lowest free number.
std::string uniqueBlockName(const OdDbDatabase& db, std::string_view stem, int first = 1);

} // namespace qvad::db
