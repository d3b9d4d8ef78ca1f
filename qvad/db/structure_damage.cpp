#include "qvad/db/structure_damage.h"

#include "qvad/db/dictionary_entries.h"
#include "qvad/db/subclass_markers.h"

#include <algorithm>
#include <string>

namespace qvad::db {

// Without their markers they cannot be read by their parts; they get them back in the layout an
// upgraded R12 object gets.
void restoreSubclassMarkers(OdDbDatabase& db) {
    std::size_t restored = 0;
    for (OdDbSymbolTable* table : db.tables())
        for (OdDbSymbolTableRecord* r : table->records()) {
            std::string_view marker = recordSubclass(r->typeName());
            if (marker.empty() || (r->hasSubclass("AcDbSymbolTableRecord") && r->hasSubclass(marker)))
                continue;
            layoutLegacyTableRecord(*r);
            ++restored;
        }
    auto entity = [&](OdDbEntity* e, const OdDbEntity* parent) {
        if (e && !e->isErased() && !e->hasSubclass("AcDbEntity") && layoutLegacyEntity(*e, parent))
            ++restored;
    };
    for (OdDbBlockTableRecord* block : db.blocks()) {
        entity(block->blockBegin(), nullptr);
        for (OdDbEntity* e : block->entities()) {
            entity(e, nullptr);
            if (e->isComplex())
                for (OdDbEntity* sub : static_cast<OdDbComplexEntity*>(e)->subEntities()) entity(sub, e);
        }
        entity(block->blockEnd(), nullptr);
    }
    if (restored)
        db.repairs().push_back("restored the subclass markers of " + std::to_string(restored) + " objects");
}

// A header variable needs a "$" name and a value; one without either is what is left of a line lost
// from the file, and readers stumble on it.
void dropBrokenHeaderVariables(OdDbDatabase& db) {
    auto& vars = db.header().all();
    auto broken = [](const HeaderVariable& v) { return v.tags.empty() || !v.name.starts_with("$"); };
    std::size_t count = static_cast<std::size_t>(std::count_if(vars.begin(), vars.end(), broken));
    if (!count) return;
    std::erase_if(vars, broken);
    db.repairs().push_back("dropped " + std::to_string(count) +
                           " header variables without a name or a value");
}

// A table that lost its name is named after its records; an empty one without a name goes.
void nameNamelessTables(OdDbDatabase& db) {
    for (OdDbSymbolTable* table : std::vector<OdDbSymbolTable*>(db.tables())) {
        if (!table->name().empty()) continue;
        std::string_view type = table->records().empty() ? "" : table->records().front()->typeName();
        OdDbSymbolTable* same = type.empty() ? nullptr : db.table(type);
        if (same) {
            for (OdDbSymbolTableRecord* r : table->records()) same->records().push_back(r);
        } else if (!type.empty()) {
            table->setString(2, type);
            db.repairs().push_back("named a table that had no name after its entries: " + std::string(type));
            continue;
        }
        table->setErased(true);
        std::erase(db.tables(), table);
        db.repairs().push_back(
            "dropped a table that had no name" +
            (same ? ", its entries joined the " + std::string(type) + " table" : std::string()));
    }
}

void dropBrokenEntriesAndTables(OdDbDatabase& db) {
    std::size_t tags = 0;
    for (OdDbObject* o : db.objectsSection())
        if (!o->isErased() && isDictionary(*o)) tags += removeBrokenEntries(*o);
    if (tags)
        db.repairs().push_back("removed " + std::to_string(tags) +
                               " dictionary keys or handles without their partner");
    for (OdDbSymbolTable* table : std::vector<OdDbSymbolTable*>(db.tables())) {
        if (!recordSubclass(table->name()).empty()) continue;
        table->setErased(true);
        for (OdDbSymbolTableRecord* r : table->records()) r->setErased(true);
        std::erase(db.tables(), table);
        db.repairs().push_back("dropped a table of a kind DXF does not have, \"" +
                               std::string(table->name()) + "\", with " +
                               std::to_string(table->records().size()) + " entries");
    }
}

} // namespace qvad::db
