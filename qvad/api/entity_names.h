#pragma once
// Entity names as the C interface hands them out: {drawing serial, handle}. The serial makes names of
// a closed drawing stale; the handle survives saving and reloading within the session.

#include "qvad/api/qvad_api.h"
#include "qvad/db/handle.h"

class OdDbObject;

namespace qvad::api {

void nameOf(const OdDbObject& object, qv_name name);
void nameOfHandle(qvad::Handle handle, qv_name name);
void clearName(qv_name name);
bool isNullName(const qv_name name);
// The object a name stands for in the open drawing, erased or not; null for a stale or unknown name.
OdDbObject* objectOf(const qv_name name);
// The handle a name carries when it belongs to the open drawing (the object need not exist, as
// references in a file may dangle); false for a name of another drawing.
bool handleOf(const qv_name name, qvad::Handle& handle);

} // namespace qvad::api
