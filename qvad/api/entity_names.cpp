#include "qvad/api/entity_names.h"

#include "qvad/api/host_session.h"
#include "qvad/db/OdDbDatabase.h"

namespace qvad::api {

void nameOfHandle(qvad::Handle handle, qv_name name) {
    name[0] = static_cast<long long>(HostSession::current().drawingSerial());
    name[1] = static_cast<long long>(handle);
}

void nameOf(const OdDbObject& object, qv_name name) {
    nameOfHandle(object.handle(), name);
}

void clearName(qv_name name) {
    name[0] = name[1] = 0;
}

bool isNullName(const qv_name name) {
    return name == nullptr || (name[0] == 0 && name[1] == 0);
}

bool handleOf(const qv_name name, qvad::Handle& handle) {
    const HostSession& session = HostSession::current();
    if (name == nullptr || session.drawingSerial() == 0) return false;
    if (static_cast<std::uint64_t>(name[0]) != session.drawingSerial()) return false;
    handle = static_cast<qvad::Handle>(name[1]);
    return true;
}

OdDbObject* objectOf(const qv_name name) {
    qvad::Handle handle = 0;
    if (!handleOf(name, handle) || handle == 0) return nullptr;
    return HostSession::current().drawing()->getObject(handle);
}

} // namespace qvad::api
