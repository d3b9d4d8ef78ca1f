#include "qvad/api/host_session.h"

#include "qvad/db/OdDbObject.h"

namespace qvad::api {

HostSession& HostSession::current() {
    static HostSession session;
    return session;
}

void HostSession::setDrawing(OdDbDatabase* drawing) {
    m_drawing = drawing;
    ++m_serial;
    m_pending.reset();
    m_tableCursors.clear();
    m_paperSpace = false;
}

} // namespace qvad::api
