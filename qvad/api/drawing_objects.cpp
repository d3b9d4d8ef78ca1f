#include "qvad/api/drawing_objects.h"

#include "qvad/api/entity_names.h"
#include "qvad/api/host_session.h"
#include "qvad/db/OdDbDatabase.h"

QV_API OdResult oddbGetObjectId(OdDbObjectId& id, const qv_name name) {
    id = OdDbObjectId();
    OdDbDatabase* db = qvad::api::HostSession::current().drawing();
    if (!db) return eNoDatabase;
    qvad::Handle handle = 0;
    if (!name || !qvad::api::handleOf(name, handle) || handle == 0) return eInvalidInput;
    if (!db->getObject(handle)) return eKeyNotFound;
    id = OdDbObjectId(db, handle);
    return eOk;
}

QV_API OdResult oddbOpenOdDbObject(OdDbObject*& object, const OdDbObjectId& id, OdDb::OpenMode,
                                   bool openErased) {
    object = nullptr;
    if (id.isNull()) return eNullObjectId;
    OdDbObject* found = id.object();
    if (!found) return eKeyNotFound;
    if (found->isErased() && !openErased) return eWasErased;
    object = found;
    return eOk;
}

QV_API OdResult oddbOpenOdDbEntity(OdDbEntity*& entity, const OdDbObjectId& id, OdDb::OpenMode mode,
                                   bool openErased) {
    entity = nullptr;
    OdDbObject* object = nullptr;
    if (OdResult r = oddbOpenOdDbObject(object, id, mode, openErased); r != eOk) return r;
    if (!object->isEntity()) return eNotThatKindOfClass;
    entity = static_cast<OdDbEntity*>(object);
    return eOk;
}
