#include "qvad/db/block_structure.h"
#include "qvad/db/dictionary_entries.h"
#include "qvad/db/drawing_repair.h"
#include "qvad/db/drawing_template.h"
#include "qvad/db/layout_links.h"
#include "qvad/db/structure_damage.h"
#include "qvad/db/symbol_references.h"
#include "qvad/db/template_merge.h"

#include <string>
#include <unordered_map>

namespace qvad::db {
namespace {

// Every object has a handle, and every table record, block entity and sub-entity names its owner.
class OwnershipAuditor {
public:
    explicit OwnershipAuditor(OdDbDatabase& db) : m_db(db) {}

    void run() {
        for (OdDbSymbolTable* table : m_db.tables()) {
            own(*table, 0);
            for (OdDbSymbolTableRecord* r : table->records()) own(*r, table->handle());
        }
        for (OdDbBlockTableRecord* block : m_db.blocks()) {
            if (block->blockBegin()) own(*block->blockBegin(), block->handle());
            for (OdDbEntity* e : block->entities()) ownEntity(*e, block->handle());
            if (block->blockEnd()) own(*block->blockEnd(), block->handle());
        }
        for (OdDbObject* o : m_db.objectsSection()) ensureHandle(*o);
        dropDeadEntries();
        ownDictionaryEntries();
        if (m_fixedOwners)
            m_db.repairs().push_back("corrected the owner of " + std::to_string(m_fixedOwners) + " objects");
    }

private:
    void ensureHandle(OdDbObject& o) {
        if (o.handle() != 0) return;
        o.setHandle(m_db.allocateHandle());
        m_db.registerHandle(&o);
    }

    void own(OdDbObject& o, Handle owner) {
        ensureHandle(o);
        if (o.ownerHandle() != owner && owner != 0) {
            // Objects the reader found without any owner tag are not worth a report line each.
            if (o.ownerHandle() != 0) ++m_fixedOwners;
            o.setOwnerHandle(owner);
        }
    }

    // A dictionary entry whose object is gone names nothing; readers would trip over it.
    void dropDeadEntries() {
        std::size_t dropped = 0;
        for (OdDbObject* o : m_db.objectsSection()) {
            if (o->isErased() || !isDictionary(*o)) continue;
            for (const DictionaryEntry& e : dictionaryEntries(*o)) {
                OdDbObject* item = m_db.getObject(e.handle);
                if (item && !item->isErased()) continue;
                removeDictionaryItem(*o, e.key);
                ++dropped;
            }
        }
        if (dropped)
            m_db.repairs().push_back("removed " + std::to_string(dropped) +
                                     " dictionary entries that named no object");
    }

    // An object without a valid owner belongs to the dictionary that lists it, or else to the object
    // that holds it by a hard-owner pointer (360: an extension dictionary, an image's reactor). Owners
    // that exist are left alone: an object may rightly belong elsewhere and only be named here.
    void ownDictionaryEntries() {
        std::unordered_map<Handle, OdDbObject*> holder;
        for (const auto& o : m_db.allObjects()) {
            if (o->isErased()) continue;
            if (isDictionary(*o))
                for (const DictionaryEntry& e : dictionaryEntries(*o)) holder.emplace(e.handle, o.get());
            for (const Tag& t : o->tags())
                if (t.code == 360) holder.emplace(parseHandle(t.value()), o.get());
        }
        for (OdDbObject* item : m_db.objectsSection()) {
            if (item->isErased() || m_db.getObject(item->ownerHandle())) continue;
            auto it = holder.find(item->handle());
            if (it == holder.end() || it->second == item) continue;
            if (item->ownerHandle() != 0) ++m_fixedOwners;
            item->setOwnerHandle(it->second->handle());
        }
    }

    void ownEntity(OdDbEntity& e, Handle owner) {
        own(e, owner);
        if (!e.isComplex()) return;
        for (OdDbEntity* sub : static_cast<OdDbComplexEntity&>(e).subEntities()) {
            // Some writers give attributes and vertices the block of their parent as owner; that
            // names the right place too, so the file keeps it.
            if (sub->ownerHandle() == owner && sub->handle() != 0) continue;
            own(*sub, e.handle());
        }
    }

    OdDbDatabase& m_db;
    std::size_t m_fixedOwners = 0;
};

} // namespace

void auditDrawing(OdDbDatabase& db) {
    dropBrokenHeaderVariables(db);
    nameNamelessTables(db);
    dropBrokenEntriesAndTables(db);
    restoreSubclassMarkers(db);
    completeBlockStructure(db, true);
    if (!isLoadingTemplate())
        for (std::string& line : describe(mergeTemplate(db))) db.repairs().push_back(std::move(line));
    if (db.versionNumber() >= 1015) mendLayoutLinks(db);
    mendSymbolReferences(db);
    OwnershipAuditor(db).run();
}

} // namespace qvad::db
