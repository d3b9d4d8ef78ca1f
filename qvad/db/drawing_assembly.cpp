#include "qvad/db/block_structure.h"
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
    if (missing && !legacy)
        db.repairs().push_back("gave handles to " + std::to_string(missing) + " objects that had none");
    if (duplicate)
        db.repairs().push_back("gave new handles to " + std::to_string(duplicate) +
                               " objects whose handle was taken");
}

OdDbSymbolTable* blockTable(OdDbDatabase& db) {
    return db.table("BLOCK_RECORD");
}

OdDbBlockTableRecord* recordForBlock(OdDbDatabase& db, const BlockDefinition& def) {
    if (OdDbObject* owner = db.getObject(def.begin->ownerHandle())) {
        if (auto* record = dynamic_cast<OdDbBlockTableRecord*>(owner)) return record;
    }
    std::string_view name = def.begin->getString(2);
    if (OdDbSymbolTable* table = blockTable(db); table && !name.empty()) {
        if (auto* record = dynamic_cast<OdDbBlockTableRecord*>(table->find(name))) return record;
    }
    return nullptr;
}

std::string_view blockBeginPart(const OdDbEntity& begin) {
    return begin.hasSubclass("AcDbBlockBegin") ? "AcDbBlockBegin" : "";
}

// A BLOCK without a name cannot be inserted or even listed; it takes its record's name, or a new one.
std::string nameNamelessBlock(OdDbDatabase& db, BlockDefinition& def, const OdDbBlockTableRecord* record) {
    bool fromRecord = record && !record->name().empty();
    std::string name = fromRecord ? std::string(record->name()) : uniqueBlockName(db, "UNNAMED");
    std::string_view part = blockBeginPart(*def.begin);
    def.begin->setString(2, name, part);
    def.begin->setString(3, name, part);
    db.repairs().push_back(fromRecord ? "gave block \"" + name + "\" back the name its record holds"
                                      : "named a block that had no name \"" + name + "\"");
    return name;
}

void linkBlocks(OdDbDatabase& db, std::vector<BlockDefinition>& defs) {
    for (BlockDefinition& def : defs) {
        OdDbBlockTableRecord* record = recordForBlock(db, def);
        std::string name(def.begin->getString(2));
        if (name.empty()) name = nameNamelessBlock(db, def, record);
        if (record && record->blockBegin()) {
            db.repairs().push_back("dropped a second definition of block \"" + name + "\"");
            for (OdDbEntity* e : def.entities) e->setErased(true);
            def.begin->setErased(true);
            if (def.end) def.end->setErased(true);
            continue;
        }
        if (!record) {
            record = newBlockRecord(db, name);
            if (blockTable(db)) db.repairs().push_back("added the missing record of block \"" + name + "\"");
        }
        record->setBlockBegin(def.begin);
        if (!def.end) {
            db.repairs().push_back("added the missing ENDBLK of block \"" + name + "\"");
            def.end = newBlockEnd(db, *record, def.begin->getString(8, "0"));
        }
        record->setBlockEnd(def.end);
        record->entities() = std::move(def.entities);
        db.blocks().push_back(record);
    }
}

OdDbBlockTableRecord* ensureLayoutBlock(OdDbDatabase& db, std::string_view name) {
    if (OdDbBlockTableRecord* b = db.findBlock(name)) return b;
    OdDbBlockTableRecord* record = nullptr;
    if (OdDbSymbolTable* table = blockTable(db))
        record = dynamic_cast<OdDbBlockTableRecord*>(table->find(name));
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
            if (record && record->isLayout())
                target = record;
            else if (record)
                ++moved;
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
    seqend->assignTags({Tag(100, "AcDbEntity"), Tag(8, parent.getString(8, "0"))});
    parent.subEntities().push_back(static_cast<OdDbEntity*>(db.add(std::move(seqend))));
}

void assembleDrawing(OdDbDatabase& db, LoadedStructure& loaded) {
    bool legacy = db.versionNumber() <= 1009;
    // A seed the file set above its handles stays: handles it skipped may be kept elsewhere.
    Handle seed = parseHandle(db.header().value("$HANDSEED"));
    if (seed > db.handseed() && seed < (Handle(1) << 60)) db.setHandseed(seed);
    assignHandles(db, loaded.needHandle, legacy);
    linkBlocks(db, loaded.blocks);
    placeEntities(db, loaded.entities);
    if (legacy) upgradeLegacyDrawing(db);
    auditDrawing(db);
}

} // namespace qvad::db
