#pragma once
// The drawing library as a module reaches it from the entity names the C interface hands out: an
// object id for a name, and the object behind an id. Results are status codes; nothing throws.

#include "qvad/api/qvad_api.h"
#include "qvad/db/OdDbEntity.h"
#include "qvad/db/OdDbObjectId.h"

// The id of the open drawing's object the name stands for; eInvalidInput for a stale, foreign or
// malformed name, eKeyNotFound when the drawing holds no such object.
QV_API OdResult oddbGetObjectId(OdDbObjectId& id, const qv_name name);
// The object behind the id (null on failure). Erased objects are refused unless openErased.
QV_API OdResult oddbOpenOdDbObject(OdDbObject*& object, const OdDbObjectId& id,
                                   OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false);
// As oddbOpenOdDbObject, and eNotThatKindOfClass for an object that is no entity.
QV_API OdResult oddbOpenOdDbEntity(OdDbEntity*& entity, const OdDbObjectId& id,
                                   OdDb::OpenMode mode = OdDb::kForRead, bool openErased = false);
