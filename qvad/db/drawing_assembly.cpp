#include "qvad/db/drawing_repair.h"

#include "qvad/db/object_factory.h"

#include <string>

namespace qvad::db {
namespace {

void assignHandles(OdDbDatabase& db, std::vector<HandleRepair>& pending, bool legacy) {
    std::size_t missing = 0, duplicate = 0;
    for (HandleRepair& r : pending) {
        r.object->setHandle(db.allocateHandle());
        db.registerHandle(r.object);
        (r.original == 0 ? missing : duplicate)++;
    }
    if (missing && !legacy) db.repairs().push_back("gave handles to " + std::to_string(missing) + " objects that had none");
    if (duplicate)
        db.repairs().push_back("gave new handles to " + std::to_string(duplicate) + " objects whose handle was taken");
}

OdDbSymbolTable* blockTable(OdDbDatabase& db) { return db.table("BLOCK_RECORD"); }

OdDbBlockTableRecord* recordForBlock(OdDbDatabase& db, const BlockDefinition& def) {
    if (OdDbObject* owner = db.getObject(def.begin->ownerHandle())) {
        if (auto* record = dynamic_cast<OdDbBlockTableRecord*>(owner)) return record;
    }
    if (OdDbSymbolTable* table = blockTable(db)) {
        if (auto* record = dynamic_cast<OdDbBlockTableRecord*>(table->find(def.begin->getString(2))))
            return record;
    }
    return nullptr;
}

OdDbBlockTableRecord* newBlockRecord(OdDbDatabase& db, std::string_view name) {
    OdDbSymbolTable* table = blockTable(db);
    auto* record = db.make<OdDbBlockTableRecord>();
    Handle h = db.allocateHandle();
    std::vector<Tag> tags = {Tag(5, db.keep(formatHandle(h))),
                             Tag(330, db.keep(formatHandle(table ? table->handle() : 0))),
                             Tag(100, "AcDbSymbolTableRecord"), Tag(100, "AcDbBlockTableRecord"),
                             Tag(2, db.keep(name))};
    if (!table) tags.erase(tags.begin() + 1);
    record->assignTags(std::move(tags));
    record->syncHeadFromTags();
    db.registerHandle(record);
    if (table) table->records().push_back(record);
    return record;
}

void linkBlocks(OdDbDatabase& db, std::vector<BlockDefinition>& defs) {
    for (BlockDefinition& def : defs) {
        OdDbBlockTableRecord* record = recordForBlock(db, def);
        std::string_view name = def.begin->getString(2);
        if (record && record->blockBegin()) {
            db.repairs().push_back("dropped a second definition of block \"" + std::string(name) + "\"");
            for (OdDbEntity* e : def.entities) e->setErased(true);
            def.begin->setErased(true);
            if (def.end) def.end->setErased(true);
            continue;
        }
        if (!record) {
            record = newBlockRecord(db, name);
            if (blockTable(db)) db.repairs().push_back("added the missing record of block \"" + std::string(name) + "\"");
        }
        record->setBlockBegin(def.begin);
        if (!def.end) {
            db.repairs().push_back("added the missing ENDBLK of block \"" + std::string(name) + "\"");
            auto end = createObject("ENDBLK", ObjectContext::Entity);
            end->assignTags({Tag(8, def.begin->getString(8, "0"))});
            def.end = static_cast<OdDbEntity*>(db.add(std::move(end)));
        }
        record->setBlockEnd(def.end);
        record->entities() = std::move(def.entities);
        db.blocks().push_back(record);
    }
}

OdDbBlockTableRecord* ensureLayoutBlock(OdDbDatabase& db, std::string_view name) {
    if (OdDbBlockTableRecord* b = db.findBlock(name)) return b;
    OdDbBlockTableRecord* record = nullptr;
    if (OdDbSymbolTable* table = blockTable(db)) record = dynamic_cast<OdDbBlockTableRecord*>(table->find(name));
    if (!record) record = newBlockRecord(db, name);
    db.blocks().push_back(record);
    return record;
}

void placeEntities(OdDbDatabase& db, std::vector<OdDbEntity*>& entities) {
    OdDbBlockTableRecord* model = ensureLayoutBlock(db, "*Model_Space");
    OdDbBlockTableRecord* paper = ensureLayoutBlock(db, "*Paper_Space");
    std::size_t moved = 0;
    for (OdDbEntity* e : entities) {
        OdDbBlockTableRecord* target = e->isInPaperSpace() ? paper : model;
        if (OdDbObject* owner = db.getObject(e->ownerHandle())) {
            auto* record = dynamic_cast<OdDbBlockTableRecord*>(owner);
            if (record && record->isLayout()) target = record;
            else if (record) ++moved;
        }
        target->entities().push_back(e);
    }
    if (moved)
        db.repairs().push_back("moved " + std::to_string(moved) +
                               " entities of the ENTITIES section whose owner was a block into their space");
}

} // namespace

void addSeqend(OdDbDatabase& db, OdDbComplexEntity& parent) {
    auto seqend = createObject("SEQEND", ObjectContext::Entity);
    seqend->assignTags({Tag(8, parent.getString(8, "0"))});
    parent.subEntities().push_back(static_cast<OdDbEntity*>(db.add(std::move(seqend))));
}

void assembleDrawing(OdDbDatabase& db, LoadedStructure& loaded) {
    bool legacy = db.versionNumber() <= 1009;
    assignHandles(db, loaded.needHandle, legacy);
    linkBlocks(db, loaded.blocks);
    placeEntities(db, loaded.entities);
    if (legacy) upgradeLegacyDrawing(db);
    auditDrawing(db);
}

} // namespace qvad::db
