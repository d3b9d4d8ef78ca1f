#include "tooldeck/host/host_variables.h"

#include "qvad/api/qvad_api.h"

namespace qvtd {

short getShortVar(const char* name) {
    qv_resbuf* buffer = qvutNewRb(QV_RTSHORT);
    if (!buffer) return 0;
    short value = 0;
    if (qvedGetVar(name, buffer) == QV_NORM && buffer->restype == QV_RTSHORT) value = buffer->resval.rint;
    qvutRelRb(buffer);
    return value;
}

int setShortVar(const char* name, short value) {
    qv_resbuf* buffer = qvutNewRb(QV_RTSHORT);
    if (!buffer) return QV_ERROR;
    buffer->resval.rint = value;
    int status = qvedSetVar(name, buffer);
    qvutRelRb(buffer);
    return status;
}

std::string getStringVar(const char* name) {
    qv_resbuf* buffer = qvutNewRb(QV_RTSHORT); // the host replaces the type with the variable's own
    if (!buffer) return {};
    std::string value;
    if (qvedGetVar(name, buffer) == QV_NORM && buffer->restype == QV_RTSTR && buffer->resval.rstring)
        value = buffer->resval.rstring;
    qvutRelRb(buffer);
    return value;
}

} // namespace qvtd
