#include "tooldeck/commands/cleanup/quantity_total.h"

#include "qvad/api/qvad_api.h"

namespace qvtd::quantity {

int readRunningTotal(double& total) {
    qv_resbuf* value = qvutNewRb(QV_RTSHORT);
    if (!value) return QV_ERROR;
    int status = qvedGetVar("userr5", value);
    if (status == QV_NORM) total = value->resval.rreal;
    qvutRelRb(value);
    return status;
}

int writeRunningTotal(double total) {
    qv_resbuf* value = qvutNewRb(QV_RTREAL);
    if (!value) return QV_ERROR;
    value->resval.rreal = total;
    int status = qvedSetVar("userr5", value);
    qvutRelRb(value);
    return status;
}

} // namespace qvtd::quantity
