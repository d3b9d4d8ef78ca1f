#include "qvad/api/entity_walk.h"

#include "qvad/db/OdDbDatabase.h"

namespace qvad::api {

std::vector<WalkedEntity> drawingEntities(const OdDbDatabase& db) {
    std::vector<WalkedEntity> walked;
    for (const OdDbBlockTableRecord* space : {db.modelSpace(), db.paperSpace()}) {
        if (!space) continue;
        for (OdDbEntity* e : space->entities()) {
            if (e->isErased()) continue;
            walked.push_back({e, false});
            if (!e->isComplex()) continue;
            for (OdDbEntity* sub : static_cast<OdDbComplexEntity*>(e)->subEntities())
                if (!sub->isErased()) walked.push_back({sub, true});
        }
    }
    return walked;
}

} // namespace qvad::api
