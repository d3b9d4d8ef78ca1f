#include "tooldeck/host/user_break.h"

#include "qvad/api/qvad_api.h"

namespace qvtd {

bool stepCancelled(int status) {
    // The break key is asked even after a cancelled step, so a pending break does not leak into the
    // next command.
    bool broken = qvedUsrBrk() != 0;
    return status == QV_CANCEL || broken;
}

int stepStatus(int status) {
    return stepCancelled(status) ? QV_CANCEL : status;
}

} // namespace qvtd
