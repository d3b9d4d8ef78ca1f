#include "qvad/db/block_structure.h"

#include "qvad/db/object_factory.h"
#include "qvad/db/table_records.h"

#include <algorithm>
#include <string>

namespace qvad::db {
namespace {

std::string_view handleText(OdDbDatabase& db, Handle h) {
    return db.keep(formatHandle(h));
}

OdDbEntity* addEntity(OdDbDatabase& db, std::string_view type, std::vector<Tag> tags) {
    auto object = createObject(type, ObjectContext::Entity);
    object->setDatabase(&db);
    object->assignTags(std::move(tags));
    object->syncHeadFromTags();
    return static_cast<OdDbEntity*>(db.add(std::move(object)));
}

OdDbSymbolTable* addBlockTable(OdDbDatabase& db) {
    auto table = std::make_unique<OdDbSymbolTable>();
    table->setDatabase(&db);
    table->assignTags({Tag(2, "BLOCK_RECORD"), Tag(5, handleText(db, db.allocateHandle())), Tag(330, "0"),
                       Tag(100, "AcDbSymbolTable"), Tag(70, "0")});
    table->syncHeadFromTags();
    auto* raw = static_cast<OdDbSymbolTable*>(db.add(std::move(table)));
    // The block table is always the last one.
    db.tables().push_back(raw);
    return raw;
}

bool contains(const std::vector<OdDbSymbolTableRecord*>& records, const OdDbSymbolTableRecord* r) {
    return std::find(records.begin(), records.end(), r) != records.end();
}

bool isListed(const OdDbDatabase& db, const OdDbBlockTableRecord* record) {
    return std::find(db.blocks().begin(), db.blocks().end(), record) != db.blocks().end();
}

// Model space and the active paper space are the host's own: completing them needs no word.
bool isHostSpace(const OdDbDatabase& db, const OdDbBlockTableRecord& record) {
    return record.isModelSpace() || equalsNoCase(record.name(), "*Paper_Space") || &record == db.paperSpace();
}

} // namespace

OdDbBlockTableRecord* newBlockRecord(OdDbDatabase& db, std::string_view name) {
    OdDbSymbolTable* table = db.table("BLOCK_RECORD");
    auto* record = db.make<OdDbBlockTableRecord>();
    std::vector<Tag> tags = {
        Tag(5, handleText(db, db.allocateHandle())), Tag(330, handleText(db, table ? table->handle() : 0)),
        Tag(100, "AcDbSymbolTableRecord"), Tag(100, "AcDbBlockTableRecord"), Tag(2, db.keep(name))};
    if (!table) tags.erase(tags.begin() + 1);
    record->assignTags(std::move(tags));
    record->syncHeadFromTags();
    db.registerHandle(record);
    if (table) {
        db.notifyBeforeModify(*table);
        table->records().push_back(record);
    }
    return record;
}

OdDbEntity* newBlockBegin(OdDbDatabase& db, const OdDbBlockTableRecord& record) {
    std::vector<Tag> tags = {Tag(5, handleText(db, db.allocateHandle())),
                             Tag(330, handleText(db, record.handle())),
                             Tag(100, "AcDbEntity"),
                             Tag(8, "0"),
                             Tag(100, "AcDbBlockBegin"),
                             Tag(2, db.keep(record.name())),
                             Tag(70, "0"),
                             Tag(10, "0.0"),
                             Tag(20, "0.0"),
                             Tag(30, "0.0"),
                             Tag(3, db.keep(record.name())),
                             Tag(1, "")};
    if (record.isPaperSpace()) tags.insert(tags.begin() + 3, Tag(67, "1"));
    return addEntity(db, "BLOCK", std::move(tags));
}

OdDbEntity* newBlockEnd(OdDbDatabase& db, const OdDbBlockTableRecord& record, std::string_view layer) {
    std::vector<Tag> tags = {Tag(5, handleText(db, db.allocateHandle())),
                             Tag(330, handleText(db, record.handle())), Tag(100, "AcDbEntity"),
                             Tag(8, db.keep(layer)), Tag(100, "AcDbBlockEnd")};
    if (record.isPaperSpace()) tags.insert(tags.begin() + 3, Tag(67, "1"));
    return addEntity(db, "ENDBLK", std::move(tags));
}

std::string uniqueBlockName(const OdDbDatabase& db, std::string_view stem, int first) {
    OdDbSymbolTable* table = db.table("BLOCK_RECORD");
    for (int n = first;; ++n) {
        std::string name = std::string(stem) + std::to_string(n);
        if (!db.findBlock(name) && !(table && table->find(name))) return name;
    }
}

void completeBlockStructure(OdDbDatabase& db, bool report) {
    OdDbSymbolTable* table = db.table("BLOCK_RECORD");
    if (!table) {
        table = addBlockTable(db);
        if (report) db.repairs().push_back("added the missing BLOCK_RECORD table");
    }
    std::size_t adopted = 0;
    for (OdDbBlockTableRecord* block : db.blocks()) {
        if (block->isErased() || contains(table->records(), block)) continue;
        db.notifyBeforeModify(*table);
        table->records().push_back(block);
        block->setOwnerHandle(table->handle());
        ++adopted;
    }
    if (adopted && report && table->records().size() > adopted)
        db.repairs().push_back("put " + std::to_string(adopted) +
                               " block records into the BLOCK_RECORD table");
    for (OdDbSymbolTableRecord* r : table->records()) {
        auto* record = dynamic_cast<OdDbBlockTableRecord*>(r);
        if (!record || record->isErased()) continue;
        bool listed = isListed(db, record);
        if (listed && record->blockBegin() && record->blockEnd()) continue;
        if (report && !record->blockBegin() && !isHostSpace(db, *record))
            db.repairs().push_back("added the missing definition of block \"" + std::string(record->name()) +
                                   "\"");
        if (!record->blockBegin()) record->setBlockBegin(newBlockBegin(db, *record));
        if (!record->blockEnd()) record->setBlockEnd(newBlockEnd(db, *record));
        if (!listed) db.blocks().push_back(record);
    }
    updateRecordCount(*table);
}

} // namespace qvad::db
