// btrim and bextend: the host's own TRIM and EXTEND, started through the keystroke queue so the user
// can pick edges inside blocks there.

#include "qvad/api/qvad_api.h"
#include "tooldeck/host/CSysVarSet.h"
#include "tooldeck/module/command_handlers.h"

namespace qvtd::cmd {

namespace {

void sendUnderGuard(const char* keystrokes) {
    CSysVarSet guard;
    sds_sendmessage(keystrokes);
    qvedRetVoid();
}

} // namespace

void cmd_btrim() {
    sendUnderGuard("^C^PTRIM ");
}

void cmd_bextend() {
    sendUnderGuard("^C^PEXTEND ");
}

} // namespace qvtd::cmd
