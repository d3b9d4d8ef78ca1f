#include "qvad/db/drawing_repair.h"

#include <string>

namespace qvad::db {
namespace {

class Auditor {
public:
    explicit Auditor(OdDbDatabase& db) : m_db(db) {}

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

    void ownEntity(OdDbEntity& e, Handle owner) {
        own(e, owner);
        if (e.isComplex())
            for (OdDbEntity* sub : static_cast<OdDbComplexEntity&>(e).subEntities()) own(*sub, e.handle());
    }

    OdDbDatabase& m_db;
    std::size_t m_fixedOwners = 0;
};

} // namespace

void auditDrawing(OdDbDatabase& db) { Auditor(db).run(); }

} // namespace qvad::db
